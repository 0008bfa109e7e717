#include "bench/startreport.h"

#include <QApplication>
#include <QMainWindow>

/// A program with an empty window of the size of ours.
int main(int argc, char** argv)
{
    StartReport report;
    report.mark("main");
    const QApplication app(argc, argv);
    report.mark("application");

    QMainWindow window;
    window.resize(1040, 665);
    window.show();
    const FirstPaint firstPaint(window, [&report] {
        report.mark("painted");
        report.finish();
    });
    return QApplication::exec();
}
