#pragma once

/// The numbers by which the device knows its modes, reports and tables.
namespace DeviceCode {

constexpr int kModeRegistration = 1;
constexpr int kModeReports = 3; ///< with clearing
constexpr int kModeProgramming = 4;

constexpr int kClosingReport = 1;

constexpr int kFreeLineTable = 21;
constexpr int kFreeLineField = 1;

} // namespace DeviceCode
