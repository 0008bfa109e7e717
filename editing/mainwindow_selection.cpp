#include "app/mainwindow.h"

#include <QTimer>

namespace {

constexpr int kTickMs = 50;

} // namespace

void MainWindow::timerTick()
{
    if (closing)
        return;
    if (redrawPending) {
        redrawPending = false;
        RedrawWithBD();
    }
    QTimer::singleShot(kTickMs, this, SLOT(timerTick()));
}
