#include "contractdriver.h"

#include "contractrecord.h"

int ContractDriver::getDriverVersion(wchar_t* buffer, int capacity)
{
    record(L"getDriverVersion", capacity);
    return answer(L"text of getDriverVersion", buffer, capacity);
}

int ContractDriver::getDriverName(wchar_t* buffer, int capacity)
{
    record(L"getDriverName", capacity);
    return answer(L"text of getDriverName", buffer, capacity);
}

int ContractDriver::setDeviceEnabled(int value)
{
    record(L"setDeviceEnabled", value);
    return 3;
}

int ContractDriver::getResultCode(int* value)
{
    record(L"getResultCode");
    *value = 7004;
    return 4;
}

int ContractDriver::getResultDescription(wchar_t* buffer, int capacity)
{
    record(L"getResultDescription", capacity);
    return answer(L"text of getResultDescription", buffer, capacity);
}

int ContractDriver::getBadParam(int* value)
{
    record(L"getBadParam");
    *value = 7006;
    return 6;
}

int ContractDriver::getBadParamDescription(wchar_t* buffer, int capacity)
{
    record(L"getBadParamDescription", capacity);
    return answer(L"text of getBadParamDescription", buffer, capacity);
}

int ContractDriver::ShowProperties()
{
    record(L"ShowProperties");
    return 8;
}

int ContractDriver::getSingleSetting(const wchar_t* name, wchar_t* buffer, int capacity)
{
    record(L"getSingleSetting", name, capacity);
    return answer(L"text of getSingleSetting", buffer, capacity);
}

int ContractDriver::setSingleSetting(const wchar_t* name, const wchar_t* value)
{
    record(L"setSingleSetting", name, value);
    return 10;
}

int ContractDriver::getSingleMapping(const wchar_t* name, wchar_t* buffer, int capacity)
{
    record(L"getSingleMapping", name, capacity);
    return answer(L"text of getSingleMapping", buffer, capacity);
}

int ContractDriver::applySingleSettings()
{
    record(L"applySingleSettings");
    return 12;
}

int ContractDriver::getCaption(wchar_t* buffer, int capacity)
{
    record(L"getCaption", capacity);
    return answer(L"text of getCaption", buffer, capacity);
}

int ContractDriver::setCaption(const wchar_t* text)
{
    record(L"setCaption", text);
    return 14;
}

int ContractDriver::readStatus()
{
    record(L"readStatus");
    return 15;
}

int ContractDriver::getSerialNumber(wchar_t* buffer, int capacity)
{
    record(L"getSerialNumber", capacity);
    return answer(L"text of getSerialNumber", buffer, capacity);
}

int ContractDriver::getFiscal(int* value)
{
    record(L"getFiscal");
    *value = 7017;
    return 17;
}

int ContractDriver::enterMode()
{
    record(L"enterMode");
    return 18;
}

int ContractDriver::resetMode()
{
    record(L"resetMode");
    return 19;
}

int ContractDriver::setMode(int value)
{
    record(L"setMode", value);
    return 20;
}

int ContractDriver::makePayment()
{
    record(L"makePayment");
    return 21;
}

int ContractDriver::setPaymentType(int value)
{
    record(L"setPaymentType", value);
    return 22;
}

int ContractDriver::getSumm(double* value)
{
    record(L"getSumm");
    *value = 7023.125;
    return 23;
}

int ContractDriver::setSumm(double value)
{
    record(L"setSumm", value);
    return 24;
}

int ContractDriver::openCheck()
{
    record(L"openCheck");
    return 25;
}

int ContractDriver::closeCheck()
{
    record(L"closeCheck");
    return 26;
}

int ContractDriver::cancelCheck()
{
    record(L"cancelCheck");
    return 27;
}

int ContractDriver::setCheckType(int value)
{
    record(L"setCheckType", value);
    return 28;
}

int ContractDriver::getCheckState(int* value)
{
    record(L"getCheckState");
    *value = 7029;
    return 29;
}

int ContractDriver::getSessionOpened(int* value)
{
    record(L"getSessionOpened");
    *value = 7030;
    return 30;
}

int ContractDriver::setPositionName(const wchar_t* text)
{
    record(L"setPositionName", text);
    return 31;
}

int ContractDriver::setPrice(double value)
{
    record(L"setPrice", value);
    return 32;
}

int ContractDriver::setQuantity(double value)
{
    record(L"setQuantity", value);
    return 33;
}

int ContractDriver::setPositionGroup(int value)
{
    record(L"setPositionGroup", value);
    return 34;
}

int ContractDriver::setRoundTarget(int value)
{
    record(L"setRoundTarget", value);
    return 35;
}

int ContractDriver::registerPosition()
{
    record(L"registerPosition");
    return 36;
}

int ContractDriver::makeReport()
{
    record(L"makeReport");
    return 37;
}

int ContractDriver::setReportType(int value)
{
    record(L"setReportType", value);
    return 38;
}

int ContractDriver::getModelId(int* value)
{
    record(L"getModelId");
    *value = 7039;
    return 39;
}

int ContractDriver::setPositionTax(int value)
{
    record(L"setPositionTax", value);
    return 40;
}

int ContractDriver::applyRounding()
{
    record(L"applyRounding");
    return 41;
}

int ContractDriver::setTableNumber(int value)
{
    record(L"setTableNumber", value);
    return 42;
}

int ContractDriver::setRowNumber(int value)
{
    record(L"setRowNumber", value);
    return 43;
}

int ContractDriver::setFieldNumber(int value)
{
    record(L"setFieldNumber", value);
    return 44;
}

int ContractDriver::setFieldType(int value)
{
    record(L"setFieldType", value);
    return 45;
}

int ContractDriver::writeTableField()
{
    record(L"writeTableField");
    return 46;
}

int ContractDriver::readTableField()
{
    record(L"readTableField");
    return 47;
}

int ContractDriver::setCommandBuffer(const wchar_t* text)
{
    record(L"setCommandBuffer", text);
    return 48;
}

int ContractDriver::getAnswerBuffer(wchar_t* buffer, int capacity)
{
    record(L"getAnswerBuffer", capacity);
    return answer(L"text of getAnswerBuffer", buffer, capacity);
}

int ContractDriver::execCommandBuffer()
{
    record(L"execCommandBuffer");
    return 50;
}

int ContractDriver::setUnitType(int value)
{
    record(L"setUnitType", value);
    return 51;
}

int ContractDriver::getCharLineLength(int* value)
{
    record(L"getCharLineLength");
    *value = 7052;
    return 52;
}

int ContractDriver::getUnitVersionMajor(wchar_t* buffer, int capacity)
{
    record(L"getUnitVersionMajor", capacity);
    return answer(L"text of getUnitVersionMajor", buffer, capacity);
}

int ContractDriver::getUnitVersionMinor(wchar_t* buffer, int capacity)
{
    record(L"getUnitVersionMinor", capacity);
    return answer(L"text of getUnitVersionMinor", buffer, capacity);
}

int ContractDriver::getUnitVersionBuild(wchar_t* buffer, int capacity)
{
    record(L"getUnitVersionBuild", capacity);
    return answer(L"text of getUnitVersionBuild", buffer, capacity);
}

int ContractDriver::setRoundMode(int value)
{
    record(L"setRoundMode", value);
    return 56;
}

int ContractDriver::makePaymentVariant()
{
    record(L"makePaymentVariant");
    return 57;
}

int ContractDriver::getDeviceDescription(wchar_t* buffer, int capacity)
{
    record(L"getDeviceDescription", capacity);
    return answer(L"text of getDeviceDescription", buffer, capacity);
}

int ContractDriver::setTagNumber(int value)
{
    record(L"setTagNumber", value);
    return 59;
}

int ContractDriver::setTagValue(const wchar_t* text)
{
    record(L"setTagValue", text);
    return 60;
}

int ContractDriver::setTagType(int value)
{
    record(L"setTagType", value);
    return 61;
}

int ContractDriver::setTagPrint(int value)
{
    record(L"setTagPrint", value);
    return 62;
}

int ContractDriver::writeTag()
{
    record(L"writeTag");
    return 63;
}

int ContractDriver::readUnitVersion()
{
    record(L"readUnitVersion");
    return 64;
}

int ContractDriver::setPositionSum(double value)
{
    record(L"setPositionSum", value);
    return 65;
}
