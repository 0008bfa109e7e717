#pragma once

#include "emulator/devicestate.h"
#include "emulator/paperprinter.h"
#include "emulator/resultcodes.h"

#include <optional>

namespace emulator {

/// A position as the registers describe it; without a sum it is price times quantity.
struct PositionRequest
{
    QString name;
    double price = 0;
    double quantity = 0;
    std::optional<double> sum;
    int group = 0;
    int tax = 0;
};

/// A field of a table, with the type that its value is read or written as.
struct FieldAddress
{
    int table = 0;
    int row = 0;
    int field = 0;
    int type = 0;
};

/// The device itself, as it stands at the other end of the cable. One for all driver objects of the process; the
/// owner guards it by a lock. Each change is marked, so that the owner knows when to save.
class CashRegister
{
public:
    const DeviceState& state() const { return m_state; }
    /// Replaces everything, as another device at the same cable would.
    void setState(const DeviceState& state);

    /// True once after any change since the last call. Rows of table 20 come by the hundred, so a change of them
    /// can be left for a later call.
    bool takeChanged(bool withTemplates);

    /// Whether the device answers at all.
    Outcome link() const;

    /// Version of a unit: 145 firmware, 160 templates.
    Outcome unitVersion(int unit, UnitVersion& version) const;

    Outcome enterMode(int number);
    Outcome resetMode();

    Outcome openReceipt(int type);
    Outcome registerPosition(const PositionRequest& request);
    /// Attribute of the receipt; type 5 is text.
    Outcome writeAttribute(const Attribute& attribute, int type);
    /// Takes less than a rouble off the receipt. Target and mode 0 are all that the device knows.
    Outcome applyRounding(int target, int mode, double sum);
    Outcome pay(int type, double sum);
    /// Takes a payment of the type back.
    Outcome reversePayment(int type, double sum);
    Outcome closeReceipt();
    Outcome cancelReceipt();
    /// What is to be paid for the open receipt, in roubles.
    double receiptTotal() const;

    /// Report 1 closes the shift.
    Outcome makeReport(int type);

    /// A field of table 2 or 21 through the registers; type 1 is text, 2 hexadecimal text.
    Outcome readField(const FieldAddress& address, QString& text) const;
    Outcome writeField(const FieldAddress& address, const QString& text);
    /// A raw command as text, and the device's answer in the same form.
    Outcome execute(const QString& command, QString& answer);

    /// What has been printed since the last call.
    QList<Print> takePrints();

    void applySettings(const QMap<QString, QString>& settings);

private:
    /// Whether a receipt is open in registration mode, as every step inside a receipt wants it.
    Outcome receiptStep() const;
    Outcome programmingStep() const;
    Outcome accept(const Payment& payment);
    void printReceipt(bool annulled);
    void print(const QString& kind, const Paper& paper);

    DeviceState m_state;
    QList<Print> m_prints;
    bool m_changed = false;
    bool m_templatesChanged = false;
};

} // namespace emulator
