#include "emulator/fpaxdriver.h"

#include "emulator/emulator.h"

namespace emulator {

int FpaxDriver::setCheckType(int type)
{
    return setRegister("setCheckType", m_registers.checkType, type);
}

int FpaxDriver::openCheck()
{
    return executeOnDevice("openCheck",
                           [this] { return m_emulator.device().openReceipt(m_registers.checkType); });
}

int FpaxDriver::closeCheck()
{
    return executeOnDevice("closeCheck", [this] { return m_emulator.device().closeReceipt(); });
}

int FpaxDriver::cancelCheck()
{
    return executeOnDevice("cancelCheck", [this] { return m_emulator.device().cancelReceipt(); });
}

int FpaxDriver::setReportType(int type)
{
    return setRegister("setReportType", m_registers.reportType, type);
}

int FpaxDriver::makeReport()
{
    return executeOnDevice("makeReport",
                           [this] { return m_emulator.device().makeReport(m_registers.reportType); });
}

int FpaxDriver::setPositionName(const wchar_t* name)
{
    return setTextRegister("setPositionName", m_registers.positionName, name);
}

int FpaxDriver::setPrice(double price)
{
    return setRegister("setPrice", m_registers.price, price);
}

int FpaxDriver::setQuantity(double quantity)
{
    return setRegister("setQuantity", m_registers.quantity, quantity);
}

int FpaxDriver::setPositionSum(double sum)
{
    return setRegister("setPositionSum", m_registers.positionSum, sum);
}

int FpaxDriver::setPositionGroup(int group)
{
    return setRegister("setPositionGroup", m_registers.positionGroup, group);
}

int FpaxDriver::setPositionTax(int tax)
{
    return setRegister("setPositionTax", m_registers.positionTax, tax);
}

int FpaxDriver::registerPosition()
{
    return executeOnDevice("registerPosition", [this] {
        const Registers& r = m_registers;
        const Outcome outcome = m_emulator.device().registerPosition(
            {r.positionName, r.price, r.quantity, r.positionSum, r.positionGroup, r.positionTax});
        // The sum goes with one position; without it the next one is price times quantity.
        if (outcome.isOk())
            m_registers.positionSum.reset();
        return outcome;
    });
}

int FpaxDriver::setRoundTarget(int target)
{
    return setRegister("setRoundTarget", m_registers.roundTarget, target);
}

int FpaxDriver::setRoundMode(int mode)
{
    return setRegister("setRoundMode", m_registers.roundMode, mode);
}

int FpaxDriver::applyRounding()
{
    return executeOnDevice("applyRounding", [this] {
        return m_emulator.device().applyRounding(m_registers.roundTarget, m_registers.roundMode,
                                                 m_registers.sum);
    });
}

int FpaxDriver::getSumm(double* sum)
{
    return run("getSumm", Reach::Driver, true, {}, [&](Call&) {
        if (sum == nullptr)
            return -1;
        *sum = m_registers.sum;
        return 0;
    });
}

int FpaxDriver::setSumm(double sum)
{
    return setRegister("setSumm", m_registers.sum, sum);
}

int FpaxDriver::setPaymentType(int type)
{
    return setRegister("setPaymentType", m_registers.paymentType, type);
}

int FpaxDriver::makePayment()
{
    return executeOnDevice(
        "makePayment", [this] { return m_emulator.device().pay(m_registers.paymentType, m_registers.sum); });
}

int FpaxDriver::makePaymentVariant()
{
    return executeOnDevice("makePaymentVariant", [this] {
        return m_emulator.device().reversePayment(m_registers.paymentType, m_registers.sum);
    });
}

int FpaxDriver::setTagNumber(int number)
{
    return setRegister("setTagNumber", m_registers.tagNumber, number);
}

int FpaxDriver::setTagValue(const wchar_t* value)
{
    return setTextRegister("setTagValue", m_registers.tagValue, value);
}

int FpaxDriver::setTagType(int type)
{
    return setRegister("setTagType", m_registers.tagType, type);
}

int FpaxDriver::setTagPrint(int print)
{
    return setRegister("setTagPrint", m_registers.tagPrint, print);
}

int FpaxDriver::writeTag()
{
    return executeOnDevice("writeTag", [this] {
        const Attribute attribute{m_registers.tagNumber, m_registers.tagValue, m_registers.tagPrint != 0};
        return m_emulator.device().writeAttribute(attribute, m_registers.tagType);
    });
}

} // namespace emulator
