#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// One field as a test writes it down. What a test does not name passes every check.
struct FieldRow
{
    int block = 0;
    int font = 0;
    int x2x = 0;
    int x2y = 0;
    int flags = 0;
    int gap = 0;
    int line = 1;
    int x = 0;
    int size = 10;
    int dropIfZero = 0;
    int pressRight = 0;
    int expand = 0;
    int cutToWidth = 0;
    int maskMode = 0;
    int fractFormat = 0;
    int brightness = 0;
    int alignInPole = 1;
    int alignOnTape = 1;
    int tailChar = 32;
    QString desc = QStringLiteral("Проба: поле");
    bool need = false;
    unsigned int blockMask = 0xffff;

    /// The short text that the tape shows of `desc`.
    QString view() const;
};

// The four formats of template files, each record without its line feed.

/// A record of "new, 26+str", exactly as the program writes it.
QByteArray maskRecord(int type, const FieldRow& field);

/// A record of "new, 19+str".
QByteArray plainRecord(const FieldRow& field);

/// A record of "old, 20+[str]", with its description.
QByteArray oldRecord(const FieldRow& field);

/// The nine records of the row `row` (from 1) of "new, 9*9".
QList<QByteArray> dumpRecords(int row, const FieldRow& field);

/// A whole file of "new, 26+str": the first field is row 0 and so has the key 1.
QByteArray maskFile(const QList<FieldRow>& fields);

/// `count` good fields, one on each line of its block, thirty lines to a block.
QList<FieldRow> manyFields(int count);
