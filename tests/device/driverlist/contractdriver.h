#pragma once

#include "contractinterface.h"

/// A driver that writes down what reaches it. Operation i of the list answers the status i, each number getter a
/// number of its own, each text getter a text that names it.
class ContractDriver final : public LUM::Fpax::IFpax
{
public:
    int getDriverVersion(wchar_t* buffer, int capacity) override;
    int getDriverName(wchar_t* buffer, int capacity) override;
    int setDeviceEnabled(int value) override;
    int getResultCode(int* value) override;
    int getResultDescription(wchar_t* buffer, int capacity) override;
    int getBadParam(int* value) override;
    int getBadParamDescription(wchar_t* buffer, int capacity) override;
    int ShowProperties() override;
    int getSingleSetting(const wchar_t* name, wchar_t* buffer, int capacity) override;
    int setSingleSetting(const wchar_t* name, const wchar_t* value) override;
    int getSingleMapping(const wchar_t* name, wchar_t* buffer, int capacity) override;
    int applySingleSettings() override;
    int getCaption(wchar_t* buffer, int capacity) override;
    int setCaption(const wchar_t* text) override;
    int readStatus() override;
    int getSerialNumber(wchar_t* buffer, int capacity) override;
    int getFiscal(int* value) override;
    int enterMode() override;
    int resetMode() override;
    int setMode(int value) override;
    int makePayment() override;
    int setPaymentType(int value) override;
    int getSumm(double* value) override;
    int setSumm(double value) override;
    int openCheck() override;
    int closeCheck() override;
    int cancelCheck() override;
    int setCheckType(int value) override;
    int getCheckState(int* value) override;
    int getSessionOpened(int* value) override;
    int setPositionName(const wchar_t* text) override;
    int setPrice(double value) override;
    int setQuantity(double value) override;
    int setPositionGroup(int value) override;
    int setRoundTarget(int value) override;
    int registerPosition() override;
    int makeReport() override;
    int setReportType(int value) override;
    int getModelId(int* value) override;
    int setPositionTax(int value) override;
    int applyRounding() override;
    int setTableNumber(int value) override;
    int setRowNumber(int value) override;
    int setFieldNumber(int value) override;
    int setFieldType(int value) override;
    int writeTableField() override;
    int readTableField() override;
    int setCommandBuffer(const wchar_t* text) override;
    int getAnswerBuffer(wchar_t* buffer, int capacity) override;
    int execCommandBuffer() override;
    int setUnitType(int value) override;
    int getCharLineLength(int* value) override;
    int getUnitVersionMajor(wchar_t* buffer, int capacity) override;
    int getUnitVersionMinor(wchar_t* buffer, int capacity) override;
    int getUnitVersionBuild(wchar_t* buffer, int capacity) override;
    int setRoundMode(int value) override;
    int makePaymentVariant() override;
    int getDeviceDescription(wchar_t* buffer, int capacity) override;
    int setTagNumber(int value) override;
    int setTagValue(const wchar_t* text) override;
    int setTagType(int value) override;
    int setTagPrint(int value) override;
    int writeTag() override;
    int readUnitVersion() override;
    int setPositionSum(double value) override;
};
