#include "app/csettings.h"
#include "app/mainwindow.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    Settings.InitPaths();
    QCoreApplication::setOrganizationName(QObject::tr("Компания ТАВР"));
    QCoreApplication::setOrganizationDomain(QStringLiteral("shablonist.local"));
    QCoreApplication::setApplicationName(QObject::tr("Шаблонист"));

    MainWindow window;
    window.setWindowTitle(QCoreApplication::applicationName() +
                          QStringLiteral(" %1.%2.%3.%4").arg(1).arg(0).arg(0).arg(3898));
    window.show();
    return QApplication::exec();
}
