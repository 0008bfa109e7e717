#pragma once

#include <QDialog>
#include <QTimer>

class Ui_dlgDnLoad;

/// Asks what to exchange with the device, and shows the progress when it is opened a second time.
class dlgDnLoad : public QDialog
{
    Q_OBJECT

public:
    dlgDnLoad();
    ~dlgDnLoad() override;
    Q_DISABLE_COPY_MOVE(dlgDnLoad)

    bool isLoadTblChecked() const;
    bool isLoadFreeStrChecked() const;

    /// Number of the template in the device, 1 or 2; 0 if none was chosen.
    int getSubTblNum() const;

    /// Offers the template and the free lines, or does not.
    void setWhatLoadEnable(bool table, bool freeLines);

public slots:
    /// Moves the progress bar.
    void setValue(int value);
    /// Ends the dialog as its button does.
    void close();
    void stop();

private slots:
    void on_btnLoad_clicked();
    void on_chbFLoadShablon_clicked();

private:
    void warn(const QString& text);

    Ui_dlgDnLoad* ui;
    QTimer timer; ///< never started
};
