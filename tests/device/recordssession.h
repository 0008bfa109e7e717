#pragma once

#include "device/templaterecords.h"
#include "support/session.h"

/// A window that takes records of the template table as the device gives them.
struct RecordsSession : Session
{
    /// Hands the records over as those of template `subTable`.
    void load(const QList<Json::Value>& records, int subTable = 1)
    {
        Json::Value list = listOf(records);
        probe.loadRecords(list, subTable);
    }

    /// The fields of the window.
    const QMap<int, BD_T20Items::T20Item>& items() const { return probe.bd().items; }

    /// No fields, and nothing new in the log.
    void clear()
    {
        probe.bd().Clear();
        log.takeNew();
    }
};
