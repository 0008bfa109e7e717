#include "emulator/cashregister.h"

#include "emulator/receiptdata.h"

#include <QDateTime>

#include <cmath>

namespace emulator {

namespace {

constexpr int kSale = 1;
constexpr int kClosingReport = 1;
constexpr int kTextAttribute = 5;
constexpr int kMaxTextLength = 1000;
constexpr int kMaxGroup = 16;
constexpr int kMaxTax = 6;
constexpr int kLastPaymentType = 3;
constexpr qint64 kRouble = 100;
constexpr int kFirstTemplate = 1;

QString roubles(qint64 kopecks)
{
    return QString::number(static_cast<double>(kopecks) / 100.0, 'f', 2);
}

QString documentTime()
{
    return QDateTime::currentDateTime().toString("dd.MM.yyyy HH:mm");
}

} // namespace

Outcome CashRegister::receiptStep() const
{
    if (m_state.mode != mode::kRegistration)
        return Outcome::refused(code::kWrongMode);
    return m_state.receiptState == 0 ? Outcome::refused(code::kNoReceipt) : Outcome::ok();
}

Outcome CashRegister::openReceipt(int type)
{
    if (m_state.mode != mode::kRegistration)
        return Outcome::refused(code::kWrongMode);
    if (m_state.receiptState != 0)
        return Outcome::refused(code::kReceiptOpen);
    if (type != kSale)
        return Outcome::badParameter(1, QString("Тип чека %1").arg(type));
    if (m_state.shiftOpen && m_state.shiftExpired)
        return Outcome::refused(code::kShiftTooLong);
    if (!m_state.shiftOpen) {
        m_state.shiftOpen = true;
        m_state.shiftExpired = false;
        ++m_state.counters.shifts;
        m_state.counters.shiftReceipts = 0;
        m_state.counters.shiftTotal = 0;
    }
    m_state.receiptState = type;
    m_state.receipt = {};
    m_changed = true;
    return Outcome::ok();
}

Outcome CashRegister::registerPosition(const PositionRequest& request)
{
    const Outcome step = receiptStep();
    if (!step.isOk())
        return step;
    if (!m_state.receipt.payments.isEmpty())
        return Outcome::refused(code::kPaymentBegun);
    if (request.name.size() > kMaxTextLength)
        return Outcome::badParameter(1, "Наименование длиннее 1000 символов");
    const std::optional<qint64> price = kopecks(request.price);
    if (!price || *price < 0)
        return Outcome::badParameter(2, "Цена");
    if (!std::isfinite(request.quantity) || request.quantity <= 0)
        return Outcome::badParameter(3, "Количество");
    const std::optional<qint64> sum = kopecks(request.sum.value_or(request.price * request.quantity));
    if (!sum || *sum < 0)
        return Outcome::badParameter(4, "Сумма позиции");
    if (request.group < 0 || request.group > kMaxGroup)
        return Outcome::badParameter(5, QString("Отдел %1").arg(request.group));
    if (request.tax < 0 || request.tax > kMaxTax)
        return Outcome::badParameter(6, QString("Налог %1").arg(request.tax));
    m_state.receipt.positions.append(
        {request.name, *price, request.quantity, *sum, request.group, request.tax});
    m_changed = true;
    return Outcome::ok();
}

Outcome CashRegister::writeAttribute(const Attribute& attribute, int type)
{
    const Outcome step = receiptStep();
    if (!step.isOk())
        return step;
    if (attribute.number <= 0)
        return Outcome::badParameter(1, QString("Номер реквизита %1").arg(attribute.number));
    if (type != kTextAttribute)
        return Outcome::badParameter(2, QString("Тип реквизита %1").arg(type));
    if (attribute.text.isEmpty() || attribute.text.size() > kMaxTextLength)
        return Outcome::badParameter(3, "Значение реквизита");
    m_state.receipt.attributes.append(attribute);
    m_changed = true;
    return Outcome::ok();
}

Outcome CashRegister::applyRounding(int target, int mode, double sum)
{
    const Outcome step = receiptStep();
    if (!step.isOk())
        return step;
    if (!m_state.receipt.payments.isEmpty())
        return Outcome::refused(code::kPaymentBegun);
    if (target != 0)
        return Outcome::badParameter(1, QString("Предмет округления %1").arg(target));
    if (mode != 0)
        return Outcome::badParameter(2, QString("Способ округления %1").arg(mode));
    const std::optional<qint64> rounding = kopecks(sum);
    if (!rounding || *rounding < 0 || *rounding >= kRouble || *rounding > m_state.receipt.subtotal())
        return Outcome::badParameter(3, "Сумма округления");
    m_state.receipt.rounding = *rounding;
    m_changed = true;
    return Outcome::ok();
}

Outcome CashRegister::pay(int type, double sum)
{
    const std::optional<qint64> paid = kopecks(sum);
    return accept({type, paid.value_or(0), false});
}

Outcome CashRegister::reversePayment(int type, double sum)
{
    const std::optional<qint64> paid = kopecks(sum);
    return accept({type, paid.value_or(0), true});
}

Outcome CashRegister::accept(const Payment& payment)
{
    const Outcome step = receiptStep();
    if (!step.isOk())
        return step;
    if (payment.type < kCash || payment.type > kLastPaymentType)
        return Outcome::badParameter(1, QString("Вид оплаты %1").arg(payment.type));
    if (payment.sum <= 0)
        return Outcome::badParameter(2, "Сумма оплаты");
    Receipt& receipt = m_state.receipt;
    if (payment.reversed && receipt.paidBy(payment.type) < payment.sum)
        return Outcome::refused(code::kNoSuchPayment);
    // Change is given from the cash drawer; a card pays no more than the receipt.
    if (!payment.reversed && payment.type != kCash && receipt.paidByCard() + payment.sum > receipt.total())
        return Outcome::refused(code::kPaymentTooLarge);
    receipt.payments.append(payment);
    m_changed = true;
    return Outcome::ok();
}

double CashRegister::receiptTotal() const
{
    return m_state.receiptState == 0 ? 0.0 : static_cast<double>(m_state.receipt.total()) / 100.0;
}

Outcome CashRegister::closeReceipt()
{
    const Outcome step = receiptStep();
    if (!step.isOk())
        return step;
    if (m_state.receipt.paid() < m_state.receipt.total())
        return Outcome::refused(code::kNotPaid);
    m_state.receiptState = 0;
    Counters& counters = m_state.counters;
    ++counters.receipts;
    ++counters.shiftReceipts;
    counters.shiftTotal += m_state.receipt.total();
    counters.grandTotal += m_state.receipt.total();
    printReceipt(false);
    return Outcome::ok();
}

// A receipt left open, by a power cut for one, can be annulled whatever the mode.
Outcome CashRegister::cancelReceipt()
{
    if (m_state.receiptState == 0) {
        const bool otherMode = m_state.mode == mode::kClosingReports || m_state.mode == mode::kProgramming;
        return Outcome::refused(otherMode ? code::kWrongMode : code::kNoReceipt);
    }
    m_state.receiptState = 0;
    ++m_state.counters.annulled;
    printReceipt(true);
    return Outcome::ok();
}

Outcome CashRegister::makeReport(int type)
{
    if (m_state.mode != mode::kClosingReports)
        return Outcome::refused(code::kWrongMode);
    if (type != kClosingReport)
        return Outcome::badParameter(1, QString("Тип отчёта %1").arg(type));
    if (!m_state.shiftOpen)
        return Outcome::refused(code::kShiftClosed);
    m_state.shiftOpen = false;
    m_state.shiftExpired = false;
    Counters& counters = m_state.counters;
    ++counters.documents;
    print("report", plainPaper({"ОТЧЕТ О ЗАКРЫТИИ СМЕНЫ", QString("СМЕНА %1").arg(counters.shifts),
                                QString("ЧЕКОВ ЗА СМЕНУ %1").arg(counters.shiftReceipts),
                                "ИТОГ СМЕНЫ =" + roubles(counters.shiftTotal),
                                "НЕОБНУЛЯЕМАЯ СУММА =" + roubles(counters.grandTotal), "ЗН " + m_state.serial,
                                documentTime()}));
    return Outcome::ok();
}

void CashRegister::printReceipt(bool annulled)
{
    const int number = m_state.activeTemplate == 0 ? kFirstTemplate : m_state.activeTemplate;
    const SubTable rows = m_state.templates.value(number);
    // The number of the document stands on its paper.
    ++m_state.counters.documents;
    print(annulled ? "annulled" : "receipt",
          layOut(rows, receiptPasses(m_state, annulled), m_state.lineLength));
    m_state.receipt = {};
}

void CashRegister::print(const QString& kind, const Paper& paper)
{
    const int number = m_state.counters.documents;
    m_prints.append({QString("%1-%2").arg(number, 4, 10, QChar('0')).arg(kind), paper, m_state.lineLength});
    m_changed = true;
}

} // namespace emulator
