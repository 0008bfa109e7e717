#include "fpaxsteps.h"

#include <QDir>
#include <QFile>

#include <array>

namespace {

constexpr std::array kBits{8, 4, 1, 1, 2, 8, 8, 8, 8, 1, 1, 1, 1, 2, 2, 4, 2, 2, 8};
constexpr int kEntrySize = 14;

QByteArray bytes(const QList<int>& values)
{
    QByteArray array;
    for (const int value : values)
        array.append(static_cast<char>(value));
    return array;
}

} // namespace

IFpax* programming(FpaxLibrary& fpax)
{
    IFpax* driver = connected(fpax);
    if (enter(driver, 4) != 0)
        qFatal("no programming mode");
    return driver;
}

QByteArray exchange(IFpax* driver, const QByteArray& command)
{
    const QString text = QString::fromLatin1(command.toHex(' ').toUpper()) + ' ';
    driver->setCommandBuffer(text.toStdWString().c_str());
    driver->execCommandBuffer();
    return QByteArray::fromHex(textOf(driver, &IFpax::getAnswerBuffer).toLatin1());
}

QByteArray readCommand(int subTable, int row, int first, int last)
{
    return bytes({0x51, 0, 20, subTable, row & 0xFF, row >> 8, first, last});
}

QByteArray writeCommand(int subTable, int row, int first, const QList<int>& values)
{
    const int count = static_cast<int>(values.size());
    const int length = count * kEntrySize;
    QByteArray command = bytes({0x51, 1, 20, subTable, 0, 0, first, first + count - 1, row & 0xFF, row >> 8,
                                length & 0xFF, length >> 8});
    for (int i = 0; i < count; ++i)
        command += bytes({first + i, 0, 10, 0, 1, 0, 1, 0, kBits[static_cast<std::size_t>(first + i - 1)], 2,
                          0, 1, 0, values[i]});
    return command;
}

QList<int> readRow(IFpax* driver, int subTable, int row)
{
    QList<int> values;
    while (values.size() < 19) {
        const int first = static_cast<int>(values.size()) + 1;
        const QByteArray answer = exchange(driver, readCommand(subTable, row, first, 19));
        if (answer.size() < 8 + kEntrySize)
            return {};
        for (qsizetype end = 8 + kEntrySize; end <= answer.size(); end += kEntrySize)
            values.append(static_cast<unsigned char>(answer[end - 1]));
    }
    return values;
}

void address(IFpax* driver, int table, int row, int field, int type)
{
    driver->setTableNumber(table);
    driver->setRowNumber(row);
    driver->setFieldNumber(field);
    driver->setFieldType(type);
}

int sell(IFpax* driver, const QString& name, double price, int tax)
{
    driver->setPositionName(name.toStdWString().c_str());
    driver->setQuantity(1.0);
    driver->setPrice(price);
    driver->setPositionTax(tax);
    return driver->registerPosition();
}

int pay(IFpax* driver, int type, double sum)
{
    driver->setPaymentType(type);
    driver->setSumm(sum);
    return driver->makePayment();
}

int openReceipt(IFpax* driver)
{
    enter(driver, 1);
    driver->setCheckType(1);
    return driver->openCheck();
}

PaperFolder::PaperFolder(FpaxLibrary& fpax)
{
    qputenv("FPAX_HOME", m_folder.path().toUtf8());
    fpax.control({{"cmd", "reload"}});
}

PaperFolder::~PaperFolder()
{
    qunsetenv("FPAX_HOME");
}

QStringList PaperFolder::names() const
{
    QStringList names;
    const QStringList files =
        QDir(m_folder.filePath("fpax_paper")).entryList({"*.txt"}, QDir::Files, QDir::Name);
    for (const QString& name : files)
        names.append(name.chopped(4));
    return names;
}

QString PaperFolder::file(const QString& kind, const QString& suffix) const
{
    const QStringList found = names().filter(kind);
    return found.size() == 1 ? m_folder.filePath("fpax_paper/" + found.first() + suffix) : QString();
}

QStringList PaperFolder::text(const QString& kind) const
{
    QFile source(file(kind, ".txt"));
    if (!source.open(QIODevice::ReadOnly))
        return {};
    QStringList lines = QString::fromUtf8(source.readAll()).split('\n');
    lines.removeLast();
    return lines;
}

QImage PaperFolder::picture(const QString& kind) const
{
    return QImage(file(kind, ".png"));
}
