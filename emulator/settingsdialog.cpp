#include "emulator/settingsdialog.h"

#include "emulator/faultrule.h"
#include "emulator/portsettings.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace emulator {

namespace {

constexpr int kMaxBuild = 999999;
constexpr int kFaultsHeight = 90;

template <class Widget>
Widget* named(Widget* widget, const char* name)
{
    widget->setObjectName(name);
    return widget;
}

QSpinBox* spin(const char* name, int least, int greatest)
{
    auto* box = named(new QSpinBox, name);
    box->setRange(least, greatest);
    return box;
}

} // namespace

SettingsDialog::SettingsDialog(const DialogValues& values)
    : m_values(values)
{
    setObjectName("dlgFpaxEmulator");
    setWindowTitle("Эмулятор кассы");
    auto* form = new QFormLayout;
    addModel(form);
    addState(form);
    addConnection(form);
    addFaults(form);

    auto* buttons = named(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel), "buttonBox");
    buttons->button(QDialogButtonBox::Cancel)->setText("Отмена");
    connect(buttons, &QDialogButtonBox::accepted, this, &SettingsDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &SettingsDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(buttons);
    fill();
    // After the first filling, so that a line length of the device's own is not replaced by the model's.
    connect(m_model, &QComboBox::currentIndexChanged, this, &SettingsDialog::modelPicked);
}

void SettingsDialog::addModel(QFormLayout* form)
{
    m_model = named(new QComboBox, "comboModel");
    const QList<KnownModel> models = knownModels();
    for (const KnownModel& model : models)
        m_model->addItem(model.name, model.id);
    m_serial = named(new QLineEdit, "leSerial");
    m_build = spin("spinBuild", 0, kMaxBuild);
    m_lineLength = spin("spinLineLength", 1, kMaxLineLength);
    form->addRow("Модель", m_model);
    form->addRow("Серийный номер", m_serial);
    form->addRow("Сборка прошивки", m_build);
    form->addRow("Символов в строке ленты", m_lineLength);
}

void SettingsDialog::addState(QFormLayout* form)
{
    m_fiscal = named(new QCheckBox("касса фискализирована"), "chbFiscal");
    m_shift = named(new QCheckBox("смена открыта"), "chbShift");
    m_expired = named(new QCheckBox("смена длится больше суток"), "chbShiftExpired");
    m_receipt = named(new QCheckBox("чек открыт"), "chbReceipt");
    form->addRow("Состояние", m_fiscal);
    form->addRow(QString(), m_shift);
    form->addRow(QString(), m_expired);
    form->addRow(QString(), m_receipt);
}

void SettingsDialog::addConnection(QFormLayout* form)
{
    m_connected = named(new QCheckBox("касса подключена"), "chbConnected");
    m_port = spin("spinPort", 0, kMaxComPort);
    m_port->setSpecialValueText("не COM");
    m_latency = spin("spinLatency", 0, kMaxLatencyMs);
    m_latency->setSuffix(" мс");
    form->addRow("Связь", m_connected);
    form->addRow("COM-порт", m_port);
    form->addRow("Задержка ответа", m_latency);
}

void SettingsDialog::addFaults(QFormLayout* form)
{
    m_faults = named(new QPlainTextEdit, "teFaults");
    m_faults->setTabChangesFocus(true);
    m_faults->setFixedHeight(kFaultsHeight);
    m_faults->setPlaceholderText(R"([{"operation": "enterMode", "code": -6}])");
    m_faultsError = named(new QLabel("Правила ошибок не разобрать"), "lblFaultsError");
    m_faultsError->setStyleSheet("color: red");
    m_faultsError->hide();
    form->addRow("Ошибки", m_faults);
    form->addRow(QString(), m_faultsError);
}

void SettingsDialog::fill()
{
    const DeviceState& state = m_values.state;
    int index = m_model->findData(state.model);
    if (index < 0 || m_model->itemText(index) != state.modelName) {
        m_model->addItem(state.modelName, state.model);
        index = m_model->count() - 1;
    }
    m_model->setCurrentIndex(index);
    m_serial->setText(state.serial);
    m_build->setValue(state.firmwareBuild);
    m_lineLength->setValue(state.lineLength);
    m_fiscal->setChecked(state.fiscal);
    m_shift->setChecked(state.shiftOpen);
    m_expired->setChecked(state.shiftExpired);
    m_receipt->setChecked(state.receiptState != 0);
    m_connected->setChecked(state.connected);
    m_port->setValue(m_values.port.toInt());
    m_latency->setValue(state.latencyMs);
    m_faults->setPlainText(m_values.faults);
}

void SettingsDialog::modelPicked(int index)
{
    const int id = m_model->itemData(index).toInt();
    const QList<KnownModel> models = knownModels();
    for (const KnownModel& model : models)
        if (model.id == id)
            m_lineLength->setValue(model.lineLength);
}

DialogValues SettingsDialog::values() const
{
    DialogValues values = m_values;
    DeviceState& state = values.state;
    state.model = m_model->currentData().toInt();
    state.modelName = m_model->currentText();
    state.serial = m_serial->text();
    state.firmwareBuild = m_build->value();
    state.lineLength = m_lineLength->value();
    state.fiscal = m_fiscal->isChecked();
    state.shiftOpen = m_shift->isChecked();
    state.shiftExpired = m_expired->isChecked();
    if (m_receipt->isChecked() != (state.receiptState != 0))
        state.receiptState = m_receipt->isChecked() ? 1 : 0;
    state.connected = m_connected->isChecked();
    state.latencyMs = m_latency->value();
    if (m_port->value() > 0 && m_port->value() != values.port.toInt())
        values.port = QString::number(m_port->value());
    const QByteArray faults = m_faults->toPlainText().toUtf8();
    if (faults.trimmed() != values.faults.trimmed())
        values.faults = faults;
    return values;
}

void SettingsDialog::accept()
{
    const QByteArray faults = m_faults->toPlainText().toUtf8();
    const bool readable = faults.trimmed().isEmpty() || faultRulesFromJson(faults).has_value();
    m_faultsError->setVisible(!readable);
    if (readable)
        QDialog::accept();
    else
        m_faults->setFocus();
}

} // namespace emulator
