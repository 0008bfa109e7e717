#include "support/templatefile.h"

#include <QStringList>

#include <algorithm>

namespace {

QString joined(std::initializer_list<int> numbers)
{
    QStringList texts;
    for (const int number : numbers)
        texts.append(QString::number(number));
    return texts.join(u';');
}

QString placementOf(const FieldRow& f)
{
    return joined({f.block, f.font, f.x2x, f.x2y, f.flags, f.gap, f.line, f.x, f.size});
}

} // namespace

QString FieldRow::view() const
{
    const auto colon = desc.indexOf(u':');
    return colon < 0 ? desc : desc.left(1) + u'.' + desc.mid(colon);
}

QByteArray maskRecord(int type, const FieldRow& f)
{
    const QString mask = QString::number(f.blockMask, 16).rightJustified(4, u'0');
    const QString start = QStringList{f.need ? QStringLiteral("1") : QStringLiteral("0"), mask,
                                      QString::number(type).rightJustified(3, u'0'), placementOf(f)}
                              .join(u';');
    const QString dashes(std::max<qsizetype>(0, 32 - start.size()), u'-');
    const QString params = joined({f.dropIfZero, f.pressRight, f.expand, f.cutToWidth, f.maskMode,
                                   f.fractFormat, f.brightness, f.alignInPole, f.alignOnTape, f.tailChar});
    const QString zeros(f.tailChar >= 100 ? 1 : f.tailChar >= 10 ? 2 : 3, u'0');
    return QStringList{start, dashes, params, zeros, QStringLiteral("0"), f.desc}.join(u';').toUtf8();
}

QByteArray plainRecord(const FieldRow& f)
{
    const QString params = joined({f.dropIfZero, f.pressRight, f.expand, f.cutToWidth, f.maskMode,
                                   f.fractFormat, f.brightness, f.alignInPole, f.alignOnTape, f.tailChar});
    return QStringList{placementOf(f), params, f.desc}.join(u';').toUtf8();
}

QByteArray oldRecord(const FieldRow& f)
{
    const QString params =
        joined({f.fractFormat, f.maskMode / 2, f.maskMode % 2, f.cutToWidth, f.expand, f.pressRight,
                f.dropIfZero, f.brightness, f.alignInPole, f.alignOnTape, f.tailChar});
    return QStringList{placementOf(f), params, f.desc}.join(u';').toUtf8();
}

QList<QByteArray> dumpRecords(int row, const FieldRow& f)
{
    const int bytes[] = {f.block,
                         f.font * 16 + f.x2x * 8 + f.x2y * 4 + f.flags,
                         f.gap,
                         f.line,
                         f.x,
                         f.size,
                         f.dropIfZero * 128 + f.pressRight * 64 + f.expand * 32 + f.cutToWidth * 16 +
                             f.maskMode * 4 + f.fractFormat,
                         f.brightness * 16 + f.alignInPole * 4 + f.alignOnTape,
                         f.tailChar};
    QList<QByteArray> records;
    int tableField = 0;
    for (const int byte : bytes) {
        ++tableField;
        records.append(QStringLiteral("20;%1;%2;0;0;0;0;0;%3")
                           .arg(row)
                           .arg(tableField)
                           .arg(byte, 2, 16, QLatin1Char('0'))
                           .toUtf8());
    }
    return records;
}

QByteArray maskFile(const QList<FieldRow>& fields)
{
    QByteArray bytes;
    int type = 0;
    for (const auto& field : fields)
        bytes += maskRecord(type++, field) + '\n';
    return bytes;
}

QList<FieldRow> manyFields(int count)
{
    QList<FieldRow> fields;
    for (int i = 0; i < count; ++i)
        fields.append({.block = i / 30, .line = i % 30 + 1, .desc = QStringLiteral("Проба: поле %1").arg(i)});
    return fields;
}
