#pragma once

#include "fpaxlibrary.h"

#include <QByteArray>
#include <QImage>
#include <QTemporaryDir>

/// A driver in programming mode.
IFpax* programming(FpaxLibrary& fpax);

/// Sends a raw command and gives the bytes of the answer, whatever the result.
QByteArray exchange(IFpax* driver, const QByteArray& command);
/// The same for bytes as hexadecimal text.
inline QByteArray exchange(IFpax* driver, const char* hex)
{
    return exchange(driver, QByteArray::fromHex(hex));
}

/// Read command for parameters of a row, counted from 1; 0 and 0 for its head.
QByteArray readCommand(int subTable, int row, int first, int last);
/// Write command for parameters of a row, counted from 0, with the widths that the parameters have.
QByteArray writeCommand(int subTable, int row, int first, const QList<int>& values);
/// Values of all parameters of a row, read as far as one answer holds them and on from there.
QList<int> readRow(IFpax* driver, int subTable, int row);

/// Addresses a field of a table.
void address(IFpax* driver, int table, int row, int field, int type);

/// A position of one piece.
int sell(IFpax* driver, const QString& name, double price, int tax = 0);
int pay(IFpax* driver, int type, double sum);
/// Opens a receipt in registration mode.
int openReceipt(IFpax* driver);

/// Text and picture of each print in the folder of a library, by the name without its suffix.
class PaperFolder
{
public:
    /// The library looks for its files in here from now on.
    explicit PaperFolder(FpaxLibrary& fpax);
    ~PaperFolder();

    QString path() const { return m_folder.path(); }
    QStringList names() const;
    /// Lines of the only print whose name holds `kind`; empty if there is none or more.
    QStringList text(const QString& kind) const;
    QImage picture(const QString& kind) const;

private:
    QString file(const QString& kind, const QString& suffix) const;

    QTemporaryDir m_folder;
};
