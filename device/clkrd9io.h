#pragma once

#include "device/ifpax.h"
#include "device/krdlibrary.h"
#include "device/qlumfpax.h"

#include <QObject>
#include <QScopedPointer>
#include <QString>
#include <QStringList>

#include <json/value.h>

/// The session with the cash register: owns the driver, knows what the device said last, and offers whole
/// operations. No failure of the driver leaves an operation as an Exception; the results tell of it.
///
/// The public fields are for reading.
class clKRD9IO : public QObject
{
    Q_OBJECT

public:
    // Results of the operations, beside those that an operation names itself.
    static constexpr int kDone = 0;
    static constexpr int kNoDriver = 1;
    static constexpr int kDriverError = 255;

    clKRD9IO() = default;

    // Driver and settings.
    /// Loads the driver library, whose file name may lack the platform's prefix and suffix. 0 if it is usable;
    /// 1 if it cannot be loaded, 2 if it has no interface for us: `strOut` then says why.
    int initDriver(const QString& driverPath, const QString& appPath, QString& strOut);
    /// Hands the settings to the driver; the device is not asked for anything. 0, 1 without a driver, 13 for an
    /// unknown kind of port, 255 if the driver refused or a value has a wrong type.
    int setIOSettings(const Json::Value& settings, LUM::Fpax::Model model, const QString& searchDir);
    /// Takes over a number of the COM port that was changed in the driver's own dialog. 0 if nothing changed, -1 if
    /// `settings` did, 1 without a driver, 2 if `settings` is null, 255 on failure.
    int getIOSettings(Json::Value& settings);

    // Device.
    /// Opens the port, reads everything about the device and enters programming mode. 1 if all of that worked, else
    /// 0: `portOpen`, `connected`, `modeProgram` and `checkState` then tell how far it got.
    int getStatus();
    /// The model's name out of the device's description; empty if there is none.
    QString getDeviceModel() const;
    /// 0 or 255.
    int enterModeProgram();
    /// Does nothing; always 0.
    int enterModeBlocking();
    /// Does nothing; always 0.
    int test();
    /// 0, or 255 after any failure. The fields stay as they are.
    int releasePort();
    /// Prints the closing report of the shift. 0 or 255.
    int closeSession();

    // Tables and receipts.
    /// Reads sub-table `n` of the template table into `tlvTable`, a head and its parameter groups for each row; a row
    /// that the device refuses ends the table. `n` becomes the row at which the reading stopped. 0, or 255 after a
    /// failure of the driver: `tlvTable` then keeps what was read so far. Runs on any thread.
    int readTableTLV(int& n);
    /// Sends the records of `rows`, except for heads; one that the device refuses is lost in silence. 0, or 255 after
    /// a failure that is none of the device's. Runs on any thread.
    int writeTableTLV(Json::Value& rows);
    /// Reads the free lines. 0, or 255 if the device could not be prepared, left programming mode with an error, or the
    /// driver threw an exception of its own.
    int readTable21(QStringList& lines);
    /// Writes the free lines to the rows from 1 up. 0; 1 if a row failed, 255 after any other failure.
    int writeTable21(const QStringList& lines);
    /// Switches the template and prints a fixed receipt with it; `log` gets a line for each step. 0 when the receipt
    /// was closed, 255 on failure. Ends the process if the device does not enter programming mode.
    int printReceipt(int templateNumber, bool fieldNineteen, QStringList& log);

    /// One step in the log of a long operation.
    void pulse(QStringList& log, const QString& text);

    LUM::Fpax::IFpax* driverIface = nullptr; ///< not owned: lives as long as the library
    QScopedPointer<KRDLibrary<LUM::Fpax::IFpax>> library;
    QScopedPointer<QLumFpax> fpaxWrapper;
    bool driverLoaded = false;
    bool portOpen = false;
    bool connected = false;   ///< the last getStatus() read all data of the device
    bool modeProgram = false; ///< the device stands in programming mode
    int sessionState = 0;     ///< 0: the shift is closed
    int checkState = 0;       ///< 0: no receipt is open
    int modelId = 0;
    int lineChars = 0;   ///< characters in a line of the tape
    int fiscalState = 0; ///< nonzero: the device is fiscalised
    QString driverName;
    QString driverVersion;
    QString deviceText; ///< description of the device, or why there is no connection
    QString serialText;
    QString firmwareText;
    QString infoText;      ///< the three above in one line
    QString templatesText; ///< version of the template unit, "-" if the device has none
    Json::Value tlvTable;  ///< rows of table 20 as records

signals:
    /// A transfer of the template table gets on; `value` is its progress as the operation counts it.
    void updateProgressValue(int value);
    /// A transfer of the template table has ended, well or not.
    void progressEnd();

private:
    QLumFpax& fpax();
    void readDevice();
    QString unitVersion();
    void enterDeviceMode(int mode);
    bool readRow(int subTable, int row);
    void prepareTables();
    void cancelOpenReceipt(QStringList& log);
    void switchTemplate(int templateNumber, bool fieldNineteen);
    void openReceipt(QStringList& log);
    void writeReceiptTag(int number, const QString& value);
    void registerPositions();
};

/// The one session; made before `main`, destroyed after it.
extern clKRD9IO KRD9IO; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables): one by design
