#pragma once

#include "emulator/devicestate.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QSpinBox;
class QFormLayout;

namespace emulator {

/// What the dialog shows and gives back.
struct DialogValues
{
    DeviceState state;
    /// The driver's port setting: a COM number, or a text such as "USB".
    QString port;
    /// Fault rules as JSON text.
    QByteArray faults;
};

/// The driver's own dialog: what the cash register is, in what state it stands, and how it fails.
class SettingsDialog final : public QDialog
{
    Q_OBJECT

public:
    explicit SettingsDialog(const DialogValues& values);

    /// The values as the widgets show them now.
    DialogValues values() const;

    /// Stays open while the fault rules cannot be read.
    void accept() override;

private:
    void addModel(QFormLayout* form);
    void addState(QFormLayout* form);
    void addConnection(QFormLayout* form);
    void addFaults(QFormLayout* form);
    void fill();
    void modelPicked(int index);

    DialogValues m_values;
    QComboBox* m_model = nullptr;
    QLineEdit* m_serial = nullptr;
    QSpinBox* m_build = nullptr;
    QSpinBox* m_lineLength = nullptr;
    QCheckBox* m_fiscal = nullptr;
    QCheckBox* m_shift = nullptr;
    QCheckBox* m_expired = nullptr;
    QCheckBox* m_receipt = nullptr;
    QCheckBox* m_connected = nullptr;
    QSpinBox* m_port = nullptr;
    QSpinBox* m_latency = nullptr;
    QPlainTextEdit* m_faults = nullptr;
    QLabel* m_faultsError = nullptr;
};

} // namespace emulator
