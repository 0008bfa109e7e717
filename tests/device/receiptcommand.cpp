#include "device/receiptcommand.h"

#include "device/receiptcalls.h"
#include "support/drivercalls.h"
#include "workflows/connectionbench.h"

#include <functional>

namespace {

constexpr int kFailed = 255;

// Lines of the log of a receipt.
constexpr int kCancelLine = 2;
constexpr int kProgrammingLine = 3;
constexpr int kRegistrationLine = 5;
constexpr int kOpeningLine = 6;
constexpr int kSenderLine = 7;
constexpr int kBuyerLine = 8;

/// Reads the calls that were made against those that had to be made.
class CallReader
{
public:
    explicit CallReader(const QList<MadeCall>& calls)
        : m_calls(calls)
    {
    }

    /// The next call, which has to be `wanted`; a sum that is paid is not looked at.
    MadeCall take(const QString& wanted)
    {
        const MadeCall call = m_next < m_calls.size() ? m_calls.at(m_next) : MadeCall{};
        ++m_next;
        const bool isPaid = wanted.startsWith(u"setSumm(") && call.text.startsWith(u"setSumm(");
        if (call.text != wanted && !isPaid)
            find(wanted, call.text);
        return call;
    }

    /// Runs through all of these; true if none fails.
    bool takeAll(const QStringList& wanted)
    {
        for (const auto& text : wanted)
            if (take(text).isFailure())
                return false;
        return true;
    }

    /// Takes the calls up to the first failure, which it returns, or else up to the first call that `isEnd` holds
    /// for. The very first call is no end.
    MadeCall takeUntil(const std::function<bool(const QString&)>& isEnd)
    {
        while (m_next < m_calls.size() && (m_next == 0 || !isEnd(m_calls.at(m_next).text)))
            if (const MadeCall& call = m_calls.at(m_next++); call.isFailure())
                return call;
        return {};
    }

    void expectEnd()
    {
        if (m_next < m_calls.size())
            find({}, m_calls.at(m_next).text);
    }

    QString oddity() const { return m_oddity; }

private:
    void find(const QString& wanted, const QString& found)
    {
        if (m_oddity.isEmpty())
            m_oddity = QStringLiteral("call %1: %2 in place of %3")
                           .arg(QString::number(m_next), found.isEmpty() ? "nothing" : found,
                                wanted.isEmpty() ? "nothing" : wanted);
    }

    const QList<MadeCall>& m_calls;
    qsizetype m_next = 0;
    QString m_oddity;
};

/// The box that tells of a connection that `failure` has ended.
QString connectionBox(const MadeCall& failure)
{
    const QString operation = operationOf(failure.text);
    if (operation == u"setDeviceEnabled")
        return QStringLiteral("Порт обмена недоступен!");
    if (operation == u"setMode" || operation == u"enterMode")
        return QStringLiteral("Не удалось войти в режим обмена (программирования).");
    return QStringLiteral("Не удалось установить обмен данными с устройством.");
}

/// A refused record is lost and no more; only an exception of the driver's own ends the writing.
QString readUpLoad(CallReader& calls, const QStringList& commands)
{
    for (const auto& command : commands) {
        for (const auto& text : {command, QString("execCommandBuffer()"), QString("getAnswerBuffer(4096)")}) {
            const MadeCall call = calls.take(text);
            if (call.end == MadeCall::End::Thrown)
                return QStringLiteral("При сохранении шаблона возникла ошибка.");
            const bool isLost = text == command || call.code == kNoExchange;
            if (call.end == MadeCall::End::Refused && isLost)
                break;
        }
    }
    return QStringLiteral("Шаблон успешно загружен.");
}

int firstCallOf(int line)
{
    int k = 1;
    while (receiptLineOf(k) != line)
        ++k;
    return k;
}

/// The closing report and the second opening; false if one of their calls fails.
bool readRecovery(CallReader& calls, QStringList& log)
{
    const QStringList wanted = recoveryCalls();
    for (int i = 0; i < wanted.size(); ++i) {
        if (i % 2 == 0)
            log.append(recoveryLog().at(i / 2));
        if (calls.take(wanted.at(i)).isFailure())
            return false;
    }
    return true;
}

/// The call that follows a failure of the `k`-th one; 0 if the receipt ends there.
int callAfterFailure(int k, const MadeCall& failure, CallReader& calls, QStringList& log)
{
    const int line = receiptLineOf(k);
    const bool isRefused = failure.end == MadeCall::End::Refused;
    switch (line) {
    case kCancelLine:
        return isRefused && (failure.code == kNoReceipt || failure.code == kWrongMode) ? k + 1 : 0;
    case kRegistrationLine:
    case kOpeningLine:
        if (!isRefused || (failure.code == kShiftMustBeClosed && !readRecovery(calls, log)))
            return 0;
        return firstCallOf(kSenderLine);
    case kSenderLine:
    case kBuyerLine:
        return firstCallOf(line + 1);
    default:
        return 0;
    }
}

/// Reads the calls of the receipt; the result that it has.
int readReceipt(CallReader& calls, const ReceiptOrder& order, ReceiptCourse& course)
{
    const QStringList wanted =
        goodReceiptCalls("111", QStringLiteral("0%1").arg(order.number), receiptSums());
    int line = 0;
    // What is set up and not done makes the device refuse the opening for another reason.
    bool isOpeningWhole = true;
    for (int k = 1; k <= wanted.size();) {
        if (receiptLineOf(k) != line) {
            line = receiptLineOf(k);
            course.log.append(receiptLog().at(line - 1));
        }
        MadeCall call = calls.take(wanted.at(k - 1));
        isOpeningWhole = isOpeningWhole && !((line == kRegistrationLine || line == kOpeningLine) &&
                                             call.end == MadeCall::End::Unnoticed);
        if (!call.isFailure()) {
            ++k;
            continue;
        }
        if (line == kProgrammingLine && call.end == MadeCall::End::Refused) {
            course.isEnd = true;
            return kFailed;
        }
        if (call.code == 0 && line == kCancelLine)
            call.code = kWrongMode;
        else if (call.code == 0 && order.isShiftTooOld && isOpeningWhole &&
                 operationOf(call.text) == u"openCheck")
            call.code = kShiftMustBeClosed;
        k = callAfterFailure(k, call, calls, course.log);
        if (k == 0)
            return kFailed;
    }
    return 0;
}

} // namespace

ReceiptCourse receiptCourse(const QList<MadeCall>& made, const ReceiptOrder& order,
                            const QStringList& commands)
{
    ReceiptCourse course;
    CallReader calls(made);
    const MadeCall failure = calls.takeUntil([](const QString& text) {
        return text == u"setDeviceEnabled(1)" || text.startsWith(u"setCommandBuffer(");
    });
    course.log.append(QStringLiteral("=================================="));
    if (failure.isFailure()) {
        course.log.append(noConnectionLines());
        course.boxes.append(connectionBox(failure));
        calls.expectEnd();
        course.oddity = calls.oddity();
        return course;
    }
    course.isAsked = true;
    course.log.append(goodDeviceLines());
    course.log.append(QStringLiteral("Печать тестового чека"));
    if (order.isUpLoad) {
        course.log.append(
            QStringLiteral("Загрузка шаблона в кассу отмечена - грузим (шаблон №%1)...").arg(order.number));
        course.log.append(readUpLoad(calls, commands));
    } else {
        course.log.append(QString());
    }
    course.log.append({QString(), QString()});

    const int result = readReceipt(calls, order, course);
    course.log.append(QStringLiteral("Команда на печать вернула значение: %1").arg(result));
    course.log.append({QString(), QString()});
    const auto doneOrError = [](bool isDone) {
        return isDone ? QStringLiteral("OK") : QStringLiteral("ERROR");
    };
    if (order.isSessionClose) {
        course.log.append(QStringLiteral("Закрытие смены отмечено - пробуем закрыть..."));
        course.log.append(QStringLiteral("Закрытие смены: ") +
                          doneOrError(calls.takeAll(sessionCloseCalls())));
    }
    if (order.isPortRelease) {
        course.log.append(QStringLiteral("Закрытие порта отмечено - пробуем закрыть..."));
        course.log.append(QStringLiteral("Закрытие порта: ") +
                          doneOrError(calls.takeAll({QStringLiteral("setDeviceEnabled(0)")})));
    }
    course.log.append(QStringLiteral("Печать тестового чека завершена"));
    calls.expectEnd();
    course.oddity = calls.oddity();
    return course;
}
