#include "app/mainwindow.h"
#include "ui_mainwindow.h"

#include <QGraphicsOpacityEffect>
#include <QTimer>

namespace {

constexpr int kStartTickMs = 100;
constexpr int kStatusTickMs = 200;

} // namespace

void MainWindow::timerTickSlow()
{
    if (closing)
        return;
    if (startCountdown > 0) {
        --startCountdown;
        if (startCountdown <= 8) {
            if (auto* const fade = qobject_cast<QGraphicsOpacityEffect*>(ui->lblLogo->graphicsEffect()))
                fade->setOpacity((8 - startCountdown) * 0.125);
        }
        QTimer::singleShot(kStartTickMs, this, SLOT(timerTickSlow()));
        if (startCountdown == 0)
            QTimer::singleShot(selectionTickMs, this, SLOT(timerTick()));
        return;
    }
    ui->btnFreeStrEditor->setEnabled(!freeStrings.isEmpty());
    ui->actionFreeStrEditor->setEnabled(!freeStrings.isEmpty());
    ui->actionUpLoad->setEnabled(!freeStrings.isEmpty() || maket.getShablonLoaded());
    ui->actionFreePort->setEnabled(false);
    QTimer::singleShot(kStatusTickMs, this, SLOT(timerTickSlow()));
}
