#pragma once

/// The rows of the property table in the mode that places a field.
enum PositionRow {
    kBlockRow,
    kLineRow,
    kPositionRow,
    kSizeRow,
    kOnTapeRow,
    kInPoleRow,
    kPressRow,
    kExpandRow,
    kCutRow,
    kMaskRow,
    kDropRow,
    kStringsRow
};

/// The rows of the property table in the mode of a field's looks.
enum ViewRow {
    kFontRow,
    kDoubleWidthRow,
    kDoubleHeightRow,
    kLineGapRow,
    kBrightnessRow,
    kFormatRow,
    kTailRow,
    kLeadRow
};
