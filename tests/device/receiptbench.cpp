#include "device/receiptbench.h"

#include "device/receiptcalls.h"
#include "device/utiljson.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QTextEdit>

namespace {

constexpr int kWithoutMode = 0;
constexpr int kFirstTagCall = 16;

/// What a person does in the dialog.
void fillIn(QDialog& dialog, const ReceiptOrder& order)
{
    constexpr int middleOfTheMark = 8;
    const auto tick = [&dialog](const char* name, bool isTicked) {
        auto* const box = named<QCheckBox>(dialog, name);
        if (box->isChecked() != isTicked)
            QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(middleOfTheMark, box->height() / 2));
    };
    tick("chb02UpLoadShablon", order.isUpLoad);
    tick("chb03CloseSession", order.isSessionClose);
    tick("chb04portRelease", order.isPortRelease);
    auto* const number = named<QSpinBox>(dialog, "spinShablonNum");
    number->selectAll();
    QTest::keyClicks(number, QString::number(order.number));
    QTest::mouseClick(named<QDialogButtonBox>(dialog, "buttonBox")->button(QDialogButtonBox::Ok),
                      Qt::LeftButton);
}

/// What becomes of a call that fails like this.
MadeCall::End endOf(const QString& call, Failure failure)
{
    switch (failure) {
    case Failure::Coded:
        return isGetter(call) ? MadeCall::End::Unnoticed : MadeCall::End::Refused;
    case Failure::Codeless:
    case Failure::Pretended:
        return MadeCall::End::Unnoticed;
    case Failure::Standard:
    case Failure::Foreign:
        return MadeCall::End::Thrown;
    }
    return MadeCall::End::Done;
}

/// Empty if they are equal.
QString difference(const char* what, const QStringList& found, const QStringList& wanted)
{
    return found == wanted ? QString()
                           : QStringLiteral("%1: «%2» in place of «%3»")
                                 .arg(QString::fromUtf8(what), found.join(u'|'), wanted.join(u'|'));
}

} // namespace

EmulatedReceipt::EmulatedReceipt()
{
    device.set({{"model", 69}, {"modelName", "Тавр 77Ф"}});
    writeSettings(UtilJson::SetSettingsJson().toUtf8());
    start();
    showAndWait();
    openFields(fields);
    prepare({});
    print({});
    for (const auto& call : std::as_const(calls))
        if (operationOf(call.text) == u"setCommandBuffer")
            commands.append(call.text);
}

void EmulatedReceipt::prepare(const ReceiptOrder& order)
{
    device.dropFaults();
    device.set({{"mode", kWithoutMode},
                {"receiptState", 0},
                {"shiftOpen", order.isShiftTooOld},
                {"shiftExpired", order.isShiftTooOld},
                {"activeTemplate", 0}});
    auto* const driver = KRD9IO.driverIface;
    for (const auto setNumber :
         {&LUM::Fpax::IFpax::setMode, &LUM::Fpax::IFpax::setTableNumber, &LUM::Fpax::IFpax::setRowNumber,
          &LUM::Fpax::IFpax::setFieldNumber, &LUM::Fpax::IFpax::setFieldType, &LUM::Fpax::IFpax::setCheckType,
          &LUM::Fpax::IFpax::setReportType, &LUM::Fpax::IFpax::setPaymentType,
          &LUM::Fpax::IFpax::setTagNumber, &LUM::Fpax::IFpax::setTagType})
        (driver->*setNumber)(0);
    driver->setCaption(L"");
    driver->setCommandBuffer(L"");
    named<QTextEdit>(*window, "teLog")->clear();
    robot.takeBoxes();
    user.takeTitles();
    user.dropOrders();
    device.takeCalls();
}

void EmulatedReceipt::failCall(int k, const ReceiptFault& fault)
{
    if (fault.failure != Failure::Coded) {
        device.failCall(k, fault.failure);
        return;
    }
    device.setFaults({QJsonObject{{"operation", "*"},
                                  {"call", k},
                                  {"status", -1},
                                  {"code", fault.code},
                                  {"description", kFailureText}}});
}

void EmulatedReceipt::print(const ReceiptOrder& order, int failing, const ReceiptFault& fault)
{
    user.order([order](QDialog& dialog) { fillIn(dialog, order); });
    if (failing > 0)
        failCall(failing, fault);
    chooseInMenu(*window, "actionPrintTestChek");
    device.dropFaults();
    calls = takeCalls(failing, fault);
    course = receiptCourse(calls, order, commands);
}

QList<MadeCall> EmulatedReceipt::takeCalls(int failing, const ReceiptFault& fault)
{
    QList<MadeCall> made;
    for (const auto& call : device.takeAnsweredCalls()) {
        if (isDiagnosis(call.text))
            continue;
        MadeCall next{receiptCalls({call.text}).constFirst()};
        if (made.size() + 1 == failing) {
            next.end = endOf(call.text, fault.failure);
            next.code = next.end == MadeCall::End::Refused ? fault.code : 0;
        } else if (call.status < 0) {
            next.end = MadeCall::End::Refused; // by the device
        }
        made.append(next);
    }
    return made;
}

QString EmulatedReceipt::harmOfGoodReceipt(const ReceiptOrder& order)
{
    prepare(order);
    print(order);
    QStringList wanted = goodReceiptCalls("111", QStringLiteral("0%1").arg(order.number), receiptSums());
    if (order.isShiftTooOld)
        wanted = wanted.first(kFirstTagCall - 1) + recoveryCalls() + wanted.mid(kFirstTagCall - 1);
    if (order.isSessionClose)
        wanted += sessionCloseCalls();
    if (order.isPortRelease)
        wanted.append(QStringLiteral("setDeviceEnabled(0)"));
    QStringList made;
    for (const auto& call : std::as_const(calls))
        made.append(call.text);
    const QStringList last = made.mid(made.size() - wanted.size());
    const QJsonObject state = device.state();
    for (const auto& harm : {difference("calls", last, wanted), harmAfter(),
                             difference("result", course.log.filter("Команда на печать вернула значение: 0"),
                                        {"Команда на печать вернула значение: 0"}),
                             difference("template", {state["activeTemplate"].toVariant().toString()},
                                        {QString::number(order.number)}),
                             difference("shift", {state["shiftOpen"].toVariant().toString()},
                                        {QVariant(!order.isSessionClose).toString()})})
        if (!harm.isEmpty())
            return "good receipt: " + harm;
    return {};
}

QString EmulatedReceipt::harmAfter()
{
    QStringList titles;
    if (course.isAsked)
        titles.append(QStringLiteral("Печать тестового чека"));
    const QJsonObject state = device.state();
    for (const auto& wrong :
         {course.oddity, difference("boxes", robot.takeTexts(), course.boxes),
          difference("dialogs", user.takeTitles(), titles), difference("log", log(), course.log),
          difference("tape", harm(fields), {}),
          difference("open receipt", {QVariant(state["receiptState"].toInt() != 0).toString()},
                     {QVariant(isReceiptLeftOpen()).toString()})})
        if (!wrong.isEmpty())
            return wrong;
    if (course.isEnd)
        return QStringLiteral("the program has not ended");
    if (WindowProbe(*window).heldTemplate() != maskFile(fields))
        return QStringLiteral("the template has changed");
    return {};
}

/// A receipt that was opened stays so unless its own end comes.
bool EmulatedReceipt::isReceiptLeftOpen() const
{
    bool isOpen = false;
    for (const auto& call : calls) {
        if (call.end != MadeCall::End::Done)
            continue;
        const QString operation = operationOf(call.text);
        isOpen = operation == u"openCheck" || (isOpen && operation != u"closeCheck");
    }
    return isOpen;
}

int receiptStart(const QList<MadeCall>& calls)
{
    // The first one is that of the connection.
    for (int i = 1; i < calls.size(); ++i)
        if (calls.at(i).text == u"setDeviceEnabled(1)")
            return i + 1;
    return 0;
}

QString harmOfFaults(const ReceiptOrder& order, const ReceiptFault& fault, int between)
{
    EmulatedReceipt b;
    if (const QString harm = b.harmOfGoodReceipt(order); !harm.isEmpty())
        return harm;
    const QList<MadeCall> good = b.calls;
    const int start = receiptStart(good);
    int failures = 0;
    for (int k = 1; k <= good.size(); ++k) {
        const bool isModeOfTable = k == start + 2 || k == start + 3;
        if (isModeOfTable && fault.failure == Failure::Coded)
            continue; // ends the program
        b.prepare(order);
        b.print(order, k, fault);
        QString harm = b.calls.size() < k ? QStringLiteral("it is never made") : b.harmAfter();
        if (harm.isEmpty() && ++failures % between == 0)
            harm = b.harmOfGoodReceipt(order);
        if (!harm.isEmpty())
            return QStringLiteral("call %1, %2: ").arg(QString::number(k), good.at(k - 1).text) + harm;
    }
    return b.harmOfGoodReceipt(order);
}
