#include "bench/startreport.h"

#include <QApplication>
#include <QLabel>
#include <QMainWindow>

/// A program with an empty window of the size of ours. With the argument "word" one label stands in it: what the first
/// text of a process takes.
int main(int argc, char** argv)
{
    StartReport report;
    report.mark("main");
    const QApplication app(argc, argv);
    report.mark("application");

    QMainWindow window;
    window.resize(1040, 665);
    if (QCoreApplication::arguments().value(1) == u"word")
        window.setCentralWidget(new QLabel(QStringLiteral("Чек"), &window));
    window.show();
    const FirstPaint firstPaint(window, [&report] {
        report.mark("painted");
        report.finish();
    });
    return QApplication::exec();
}
