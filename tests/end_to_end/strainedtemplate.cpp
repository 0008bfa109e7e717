#include "strainedtemplate.h"

namespace {

QStringList descriptions()
{
    return {
        QStringLiteral("Проба: поле"),
        QString(),
        QStringLiteral("<b>Жирно</b>: <i>%1</i><br>&amp"),
        QStringLiteral("100%: %1 %2 %L1 %%n %99"),
        QStringLiteral("&Амперсанд && рядом: &x"),
        QStringLiteral(":с двоеточия"),
        QStringLiteral("  пробелы:  вокруг  "),
        QStringLiteral("Конец строки: \r"),
        QStringLiteral("Straße: ΣΑΣ ŉ"),
        QString(300, u'Щ') + u':' + QString(300, u'ю'),
        QStringLiteral("Строка: \"кавычки\", 'апострофы', \\t\t"),
        QStringLiteral("Налог: ставка"),
    };
}

} // namespace

QList<FieldRow> strainedTemplate(std::mt19937& random)
{
    const auto upTo = [&random](int last) {
        return static_cast<int>(random() % static_cast<unsigned int>(last + 1));
    };
    const auto one = [&upTo](const QList<int>& of) { return of.at(upTo(static_cast<int>(of.size()) - 1)); };
    const QStringList texts = descriptions();

    QList<FieldRow> fields;
    const int count = one({1, 2, 5, 20, 60, 160});
    int farLines = upTo(2);
    for (int i = 0; i < count; ++i) {
        FieldRow field{.block = upTo(9),
                       .font = upTo(7),
                       .x2x = upTo(1),
                       .x2y = upTo(1),
                       .flags = upTo(3),
                       .gap = one({0, 4, 15, 16, 255}),
                       .line = upTo(9) == 0 ? 12 : 1 + upTo(3),
                       .x = one({0, 0, 1, 2, 5, 20, 98, 99, 100, 254, 255}),
                       .size = one({0, 1, 8, 20, 64, 255}),
                       .dropIfZero = upTo(1),
                       .pressRight = upTo(1),
                       .expand = upTo(1),
                       .cutToWidth = upTo(1),
                       .maskMode = upTo(3),
                       .fractFormat = upTo(3),
                       .brightness = upTo(15),
                       .alignInPole = upTo(3),
                       .alignOnTape = upTo(3),
                       .tailChar = one({0, 10, 31, 32, 65, 152, 200, 255}),
                       .desc = texts.at(upTo(static_cast<int>(texts.size()) - 1)),
                       .need = upTo(4) == 0};
        // A line far down draws all the lines above it too, so there are few of them.
        if (farLines > 0 && upTo(9) == 0) {
            field.line = one({99, 100, 254, 255});
            --farLines;
        }
        field.blockMask =
            static_cast<unsigned int>(one({0, 0xffff, 0xffff, 0x3ff, 1 << field.block, upTo(0xffff)}));
        fields.append(field);
    }
    // By a description of some length the format is told.
    fields.first().desc = texts.first();
    return fields;
}
