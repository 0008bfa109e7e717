#pragma once

#include "emulator/factorytemplates.h"
#include "emulator/receipt.h"
#include "emulator/templatetable.h"

#include <QJsonObject>
#include <QMap>
#include <QString>
#include <QStringList>

namespace emulator {

/// Modes of the cash register.
namespace mode {
constexpr int kNone = 0;
constexpr int kRegistration = 1;
constexpr int kClosingReports = 3;
constexpr int kProgramming = 4;
} // namespace mode

constexpr int kMaxLatencyMs = 60000;
constexpr int kMaxLineLength = 255;

/// A unit's version in its three parts.
struct UnitVersion
{
    QString major;
    QString minor;
    QString build;

    bool operator==(const UnitVersion&) const = default;
};

/// What the cash register has counted since it left the factory.
struct Counters
{
    int shifts = 0;
    int receipts = 0;
    int annulled = 0;
    int documents = 0;
    /// Receipts of the shift, and their money in kopecks.
    int shiftReceipts = 0;
    qint64 shiftTotal = 0;
    qint64 grandTotal = 0;

    bool operator==(const Counters&) const = default;
};

/// All that the cash register remembers, and how the emulator behaves. A plain value.
struct DeviceState
{
    int model = 63;
    QString modelName = "Тавр 22Ф";
    QString serial = "0063220000017";
    int firmwareMajor = 2;
    int firmwareMinor = 14;
    int firmwareBuild = 3412;
    UnitVersion templateVersion = {"1", "0", "27"};
    bool fiscal = false;
    bool shiftOpen = false;
    bool shiftExpired = false;
    int receiptState = 0;
    int lineLength = 48;
    int mode = mode::kNone;
    bool connected = true;
    int latencyMs = 0;
    Counters counters;
    /// Settings of the driver as they were last applied.
    QMap<QString, QString> settings;
    Receipt receipt;
    /// Table 20, the templates.
    TemplateTable templates = factoryTemplates();
    /// Table 21, the free lines.
    QStringList freeLines = factoryFreeLines();
    /// Table 2, row 1, field 111: the template that receipts are printed by. 0 stands for the first.
    int activeTemplate = 1;
    /// Most parameters that one answer to a raw command holds.
    int parameterGroup = 6;

    QString description() const;
    UnitVersion firmwareVersion() const;

    QJsonObject toJson() const;
    /// Takes the members that the object has with the right type and a value in range; the others stay.
    void apply(const QJsonObject& object);

    bool operator==(const DeviceState&) const = default;
};

/// A model that the settings dialog offers.
struct KnownModel
{
    int id;
    QString name;
    int lineLength;
};

QList<KnownModel> knownModels();

} // namespace emulator
