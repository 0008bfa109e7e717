#include "bench/templatefile.h"

#include "model/bd_t20items.h"
#include "model/templatetext.h"

#include <QFile>

QByteArray makeTemplateFile(int count)
{
    QFile file(QStringLiteral(SAMPLES_DIR "/grocery-80mm.csv"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    BD_T20Items sample;
    sample.LoadFromListV04(TemplateText(file.readAll()).lines());

    BD_T20Items bd;
    for (int type = 0; type < count; ++type) {
        auto item = sample.getPoleByKey(1 + type % static_cast<int>(sample.items.size()));
        item.Type = type;
        bd.AddPoleToBD(type + 1, item);
    }
    QStringList rows;
    bd.SaveToListWMask(rows);
    QByteArray bytes;
    for (const auto& row : rows)
        bytes += row.toUtf8() + '\n';
    return bytes;
}
