#include "workflows/connectionbench.h"

#include "device/utiljson.h"
#include "support/expectedscene.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QStatusBar>
#include <QTest>

const char* const kNoPortText = "Порт обмена недоступен!";
const char* const kNoExchangeText = "Не удалось установить обмен данными с устройством.";
const char* const kNoModeText = "Не удалось войти в режим обмена (программирования).";
const char* const kNoDialogText = "Ошибка при вызове диалога настроек!\nВозможно не хватает библиотек dll.";

DriverDialogUser::DriverDialogUser()
{
    connect(&m_timer, &QTimer::timeout, this, &DriverDialogUser::look);
    m_timer.start(1);
}

void DriverDialogUser::accept(const Steps& steps)
{
    m_steps = steps;
    m_accepts = true;
}

void DriverDialogUser::cancel(const Steps& steps)
{
    m_steps = steps;
    m_accepts = false;
}

void DriverDialogUser::look()
{
    auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || dialog == m_lastSeen || dialog->objectName() != u"dlgFpaxEmulator" ||
        !dialog->isVisible())
        return;
    m_lastSeen = dialog;
    ++m_seen;
    if (m_steps)
        std::exchange(m_steps, {})(*dialog);
    auto* const buttons = named<QDialogButtonBox>(*dialog, "buttonBox");
    QTest::mouseClick(buttons->button(m_accepts ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel),
                      Qt::LeftButton);
}

SessionRenewal::~SessionRenewal()
{
    std::destroy_at(&KRD9IO);
    std::construct_at(&KRD9IO);
}

ConnectionBench::ConnectionBench()
{
    device.watch();
}

void ConnectionBench::start()
{
    window = std::make_unique<MainWindow>();
}

void ConnectionBench::showAndWait()
{
    showAndStart(*window);
    // The first turn behind the count finds nothing to send; it also writes the status line.
    QTRY_VERIFY(!isEnabled("actionUpLoad"));
}

void ConnectionBench::writeUsualSettings() const
{
    writeSettings(UtilJson::SetSettingsJson().toUtf8());
}

QLabel* ConnectionBench::statusCell(int n) const
{
    return window->statusBar()->findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly).value(n);
}

bool ConnectionBench::isEnabled(const char* action) const
{
    return named<QAction>(*window, action)->isEnabled();
}

void ConnectionBench::openFields(const QList<FieldRow>& fields)
{
    openTemplate(*window, robot, dir.write(QStringLiteral("good.csv"), maskFile(fields)));
}

QStringList ConnectionBench::harm(const QList<FieldRow>& fields) const
{
    const WindowProbe probe(*window);
    return sceneDifferences(probe.scene(), fields, {.width = probe.tapeWidth()});
}

RunningBench::RunningBench()
{
    writeUsualSettings();
    start();
    showAndWait();
    openFields(fields);
    device.takeCalls();
    watch = std::make_unique<LogWatch>(*window);
}

void addFailureRows()
{
    QTest::addColumn<Failure>("failure");
    QTest::newRow("code") << Failure::Coded;
    QTest::newRow("no code") << Failure::Codeless;
    QTest::newRow("standard exception") << Failure::Standard;
    QTest::newRow("any exception") << Failure::Foreign;
}

QStringList driverLines()
{
    return {QStringLiteral("Драйвер успешно загружен: \"Эмулятор кассы\" v1.0.0"),
            QStringLiteral("Чтение Json [") + Settings.pathApp + QStringLiteral("/settings.json]...")};
}

QStringList goodDeviceLines()
{
    return {QStringLiteral("==== Полученные данные ===="),
            u'"' + KRD9IO.driverName + QStringLiteral("\" v") + KRD9IO.driverVersion,
            KRD9IO.deviceText,
            QStringLiteral("Прошивка:\t\t") + KRD9IO.firmwareText,
            QStringLiteral("Версия шаблонов:\t") + KRD9IO.templatesText,
            QStringLiteral("Состояние сессии:\t") + QString::number(KRD9IO.sessionState) +
                QStringLiteral(" \tЧек: ") + QString::number(KRD9IO.checkState) +
                QStringLiteral(" Fiscal: ") + QString::number(KRD9IO.fiscalState)};
}

QStringList noConnectionLines()
{
    const auto flag = [](bool value) { return value ? QStringLiteral("1") : QStringLiteral("0"); };
    return {QStringLiteral("==== No connection ===="),
            QStringLiteral("Driver:\t1 \t") + KRD9IO.deviceText,
            QStringLiteral("Port:  \t") + flag(KRD9IO.portOpen),
            QStringLiteral("Connect:\t") + flag(KRD9IO.connected),
            QStringLiteral("ModePrgrm:\t") + flag(KRD9IO.modeProgram),
            QStringLiteral("Сессия:\t") + QString::number(KRD9IO.sessionState) + QStringLiteral(" \tЧек: ") +
                QString::number(KRD9IO.checkState)};
}
