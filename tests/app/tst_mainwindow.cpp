#include "app/mainwindow.h"
#include "support/dialogrobot.h"
#include "support/usersteps.h"
#include "support/windowprobe.h"

#include <QLabel>
#include <QTest>

class tst_MainWindow : public QObject
{
    Q_OBJECT

private slots:
    void withoutDriverTheWindowOpensAndSaysSo();
};

void tst_MainWindow::withoutDriverTheWindowOpensAndSaysSo()
{
    const ProgramDir dir;
    MainWindow window;
    showAndStart(window);
    const QStringList texts = [&] {
        QStringList found;
        for (auto* const label : window.findChildren<QLabel*>())
            found.append(label->text());
        return found;
    }();
    QVERIFY(texts.contains(QStringLiteral("Драйвер НЕ загружен!")));
}

QTEST_MAIN(tst_MainWindow)
#include "tst_mainwindow.moc"
