#pragma once

#include <QDialog>
#include <QStringList>

class Ui_dlgFreeStrEditor;

/// Edits the texts of the free lines in place; their number stays.
class dlgFreeStrEditor : public QDialog
{
    Q_OBJECT

public:
    dlgFreeStrEditor();
    ~dlgFreeStrEditor() override;
    Q_DISABLE_COPY_MOVE(dlgFreeStrEditor)

    void SetData(const QStringList& lines);
    QStringList ReadData() const;

private:
    Ui_dlgFreeStrEditor* ui;
};
