#include "workflows/transferbench.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QEvent>
#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QProgressBar>
#include <QSpinBox>
#include <QTest>

#include <algorithm>

const char* const kQuestionTitle = "Обмен с устройством";
const char* const kReadingTitle = "Чтение данных с устройства";
const char* const kWritingTitle = "Запись данных в устройство";

const char* const kNoNumberText =
    "Задайте номер шаблона в устройстве, в который будет записан макет шаблона!";

const char* const kTemplateDone = "Шаблон успешно загружен.";
const char* const kTemplateFailed = "<FONT COLOR=red>При сохранении шаблона возникла ошибка.</FONT>";
const char* const kLinesLoaded = "Свободные строки загружены.";
const char* const kLinesNotLoaded = "<FONT COLOR=red>При загрузке свободных строк возникла ошибка.</FONT>";
const char* const kLinesSaved = "Свободные строки сохранены.";
const char* const kLinesNotSaved = "<FONT COLOR=red>При сохранении свободных строк возникла ошибка.</FONT>";

namespace {

QString hexByte(unsigned int value)
{
    return QStringLiteral("%1").arg(value & 0xFFU, 2, 16, QLatin1Char('0')).toUpper();
}

/// The blocks of a field as the device keeps them: four bytes make it mandatory.
QString maskDigits(const FieldRow& field)
{
    QString digits;
    for (int i = 0; i < (field.need ? 4 : 2); ++i)
        digits += hexByte(field.blockMask >> (8 * i));
    return digits;
}

void tick(QDialog& dialog, const char* name, bool isTicked)
{
    auto* const box = named<QCheckBox>(dialog, name);
    if (box->isEnabled() && box->isChecked() != isTicked)
        clickCheckBox(box);
}

} // namespace

DialogUser::DialogUser(const QString& name)
    : m_name(name)
{
    qApp->installEventFilter(this);
    connect(&m_timer, &QTimer::timeout, this, &DialogUser::look);
    m_timer.start(1);
}

DialogUser::~DialogUser()
{
    qApp->removeEventFilter(this);
}

bool DialogUser::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() != QEvent::Show || event->spontaneous() || object->objectName() != m_name)
        return false;
    m_open = qobject_cast<QDialog*>(object);
    if (m_open == nullptr)
        return false;
    m_titles.append(m_open->windowTitle());
    const Steps steps = m_orders.isEmpty() ? [](QDialog& dialog) { dialog.reject(); } : m_orders.takeFirst();
    QMetaObject::invokeMethod(
        this,
        [steps, dialog = m_open] {
            if (dialog != nullptr && dialog->isVisible())
                steps(*dialog);
        },
        Qt::QueuedConnection);
    return false;
}

void DialogUser::look()
{
    if (m_open != nullptr && m_open->isVisible() && m_meanwhile)
        m_meanwhile(*m_open);
}

void choose(QDialog& dialog, const Choice& choice)
{
    // Only with the template ticked does the number take what is typed.
    tick(dialog, "chbFLoadShablon", true);
    auto* const number = named<QSpinBox>(dialog, "spinBox");
    if (number->isEnabled()) {
        number->setFocus();
        number->selectAll();
        QTest::keyClicks(number, QString::number(choice.number));
    }
    tick(dialog, "chbFLoadShablon", choice.isTemplate);
    tick(dialog, "chbFLoadFreeStrs", choice.isFreeLines);
}

TransferBench::TransferBench(const QList<FieldRow>& fields)
{
    device.set({{"model", 69}, {"modelName", "Тавр 77Ф"}});
    writeUsualSettings();
    start();
    showAndWait();
    if (!fields.isEmpty())
        openFields(fields);
    device.takeCalls();
    watch = std::make_unique<LogWatch>(*window);
}

void TransferBench::setTemplates(const QMap<int, QList<FieldRow>>& templates)
{
    QJsonObject table;
    for (auto it = templates.cbegin(); it != templates.cend(); ++it) {
        QJsonArray params;
        QJsonArray names;
        QJsonArray masks;
        for (const auto& field : it.value()) {
            params.append(paramDigits(field));
            names.append(field.desc);
            masks.append(maskDigits(field));
        }
        table.insert(QString::number(it.key()),
                     QJsonObject{{"params", params}, {"names", names}, {"masks", masks}});
    }
    device.set({{"table20", table}});
}

QStringList TransferBench::deviceRows(int number)
{
    return device.state()["table20"][QString::number(number)]["params"].toVariant().toStringList();
}

QStringList TransferBench::deviceLines()
{
    return device.state()["table21"].toVariant().toStringList();
}

void TransferBench::failCommands(int n, int code)
{
    device.setFaults({QJsonObject{{"operation", "execCommandBuffer"},
                                  {"call", n},
                                  {"count", 1000000},
                                  {"status", -1},
                                  {"code", code}}});
}

void TransferBench::answer(const Choice& choice, const DialogUser::Steps& inProgress)
{
    progress.clear();
    user.order([this, choice](QDialog& dialog) {
        choose(dialog, choice);
        QObject::connect(named<QProgressBar>(dialog, "progressBar"), &QProgressBar::valueChanged, &user,
                         [this](int value) { progress.append(value); });
        clickButton(dialog, "btnLoad");
    });
    if (choice.isTemplate)
        user.order(inProgress);
}

void TransferBench::download(const Choice& choice)
{
    answer(choice);
    chooseInMenu(*window, "actionDnLoad");
}

void TransferBench::upload(const Choice& choice)
{
    QTRY_VERIFY(isEnabled("actionUpLoad"));
    answer(choice);
    chooseInMenu(*window, "actionUpLoad");
}

QByteArray TransferBench::saved()
{
    saveTemplateAs(*window, robot, dir.path(QStringLiteral("saved.csv")));
    return bytesOf(dir.path(QStringLiteral("saved.csv")));
}

QString TransferBench::chosenModel() const
{
    return named<QComboBox>(*window, "comboKassa")->currentText();
}

bool TransferBench::isTapeEmpty() const
{
    const auto items = WindowProbe(*window).scene().items();
    return std::none_of(items.cbegin(), items.cend(),
                        [](const QGraphicsItem* item) { return item->type() > QGraphicsItem::UserType; });
}

QString paramDigits(const FieldRow& f)
{
    QString digits;
    for (const int value : {f.block, f.font, f.x2x, f.x2y, f.flags, f.gap, f.line, f.x, f.size, f.dropIfZero,
                            f.pressRight, f.expand, f.cutToWidth, f.maskMode, f.fractFormat, f.brightness,
                            f.alignInPole, f.alignOnTape, f.tailChar})
        digits += hexByte(static_cast<unsigned int>(value));
    return digits;
}

QList<FieldRow> fieldsOf(const QByteArray& file)
{
    QList<FieldRow> fields;
    const QStringList rows = QString::fromUtf8(file).split(u'\n', Qt::SkipEmptyParts);
    for (const auto& row : rows) {
        const QStringList columns = row.split(u';');
        const auto number = [&columns](int column) { return columns.value(column).toInt(); };
        fields.append({.block = number(3),
                       .font = number(4),
                       .x2x = number(5),
                       .x2y = number(6),
                       .flags = number(7),
                       .gap = number(8),
                       .line = number(9),
                       .x = number(10),
                       .size = number(11),
                       .dropIfZero = number(13),
                       .pressRight = number(14),
                       .expand = number(15),
                       .cutToWidth = number(16),
                       .maskMode = number(17),
                       .fractFormat = number(18),
                       .brightness = number(19),
                       .alignInPole = number(20),
                       .alignOnTape = number(21),
                       .tailChar = number(22),
                       .desc = columns.value(25),
                       .need = number(0) != 0,
                       .blockMask = columns.value(1).toUInt(nullptr, 16)});
    }
    return fields;
}

QStringList questionLines()
{
    return QStringList("==================================") + goodDeviceLines();
}

QStringList versionLines()
{
    return {QStringLiteral("Версия прошивки: ") + KRD9IO.firmwareText,
            QStringLiteral("Версия шаблонов: ") + KRD9IO.templatesText};
}

QStringList downloadLines(int number, const QList<FieldRow>& fields)
{
    QStringList lines = questionLines() + versionLines();
    lines.append(QStringLiteral("count=%1").arg(number));
    for (const auto& field : fields)
        lines.append(QString::number(field.desc.size()) + u' ' + field.desc + u' ' + maskDigits(field));
    return lines;
}

QString modelLine()
{
    return QStringLiteral("====== Касса ID=%1 str=%2")
        .arg(QString::number(KRD9IO.modelId), KRD9IO.deviceText.section(u';', 0, 0));
}

QString reportOf(const char* templatePart, const char* linesPart)
{
    return QString::fromUtf8(templatePart) + u'\n' + QString::fromUtf8(linesPart);
}
