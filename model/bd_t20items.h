#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <json/value.h>

#include <array>

/// The template of a receipt: its fields by key, the catalogue of field names, and the blocks and lines that
/// are computed from the fields.
///
/// A field key counts from 1; key k is entry k-1 of the catalogue. Whole-template loops run from key 1 to
/// `items.size()`; one that meets a missing key inserts a blank record for it, except in CheckBDCorrect().
class BD_T20Items
{
public:
    /// One field of the template.
    struct T20Item
    {
        bool FA_NEED = false; ///< mandatory: the user may not delete the field
        quint32 BL_MASK = 0;  ///< bit n set: the field may stand in block n
        int Type = 0;         ///< row number of the field in the device's table 20
        int Block = 0;        ///< 0 to 9
        int Font = 0;         ///< 0 to 7
        int X2X = 0;          ///< double width, 0 or 1
        int X2Y = 0;          ///< double height, 0 or 1
        int PoleFlags = 0;    ///< bit 0: table of lines, bit 1: character before the field
        int LineGap = 0;      ///< line spacing, 0 to 255
        int Line = 0;         ///< line in the block, 1 to 255
        int X = 0;            ///< position in the line in character cells, 0 to 255
        int Size = 0;         ///< width in characters, 0 to 255; 0: not placed on the receipt
        int DropIfZero = 0;   ///< 0 or 1
        int PressRight = 0;   ///< 0 or 1
        int Expand = 0;       ///< 0 or 1
        int CutToWidth = 0;   ///< 0 or 1
        int MaskMode = 0;     ///< 0 to 3
        int FractFormat = 0;  ///< format of fractions, 0 to 3
        int Brightness = 0;   ///< 0 to 15
        int AlignInPole = 0;  ///< 1 left, 2 centre, 3 right
        int AlignOnTape = 0;  ///< 1 left, 2 centre, 3 right
        int TailChar = 0;     ///< code of the character after the field, 0 to 255
        QString Desc;         ///< full description: class, colon, detail
        QString DescView;     ///< short description for the tape

        /// Sets Type to `type` and nothing else.
        void InitWithDefValues(int type);

        /// Empties the texts, clears FA_NEED, sets BL_MASK to 0xff and Type, Line, X and Size to 0; all else
        /// stays.
        void Clear();

        /// Empties the texts, clears FA_NEED and sets every number to -1; only Block keeps its value.
        void ClearToUndef();

        /// Sets DescView from Desc: the class before the first colon shrinks to its first character and a
        /// point.
        void makeDescViewFromDesc();

        /// The text of Desc before its first colon; empty if it has none.
        QString getPoleClass() const;

        /// The nineteen parameters of a field in the device's order, from Block to TailChar.
        static const std::array<int T20Item::*, 19> kDeviceParams;
    };

    /// The fields on one line of a block.
    struct T_Line
    {
        QList<int> poles;  ///< keys, ascending after ReComputeBDBlocks()
        int firstIdx = -1; ///< index in `poles` of the leftmost field; -1 on an empty line

        /// Appends `key`; `firstIdx` is not updated.
        void AddPole(int key);

        /// Removes the first occurrence of `key`; `firstIdx` is not updated. A key that the line does not
        /// hold ends the process.
        void RemovePole(int key);

        /// Recomputes `firstIdx`: the smallest X wins, and of equal ones the first in `poles`.
        void FindIdxOfFirstPole(BD_T20Items* bd);
    };

    /// The lines of one block; entry 0 is the place of the block's heading.
    struct T_SHBlock
    {
        QList<T_Line> lines;

        /// Replaces the lines by `count` empty ones; none if `count` is 0 or less.
        void CreateBDLines(int count);

        /// Appends `key` to line `line`, which must exist.
        void InsertPole(int line, int key);

        /// Calls T_Line::FindIdxOfFirstPole() on every line.
        void ComputeParamsForAllLines(BD_T20Items* bd);
    };

    /// Takes the catalogue of 160 fields.
    BD_T20Items();

    QStringList& getPolesLabels();
    QStringList& getPolesLabelsView();

    /// True if the field of this key is mandatory on every device.
    static bool getFA_NEED(int key);

    /// The record of `key`; a blank one is inserted if there is none.
    T20Item& getPoleByKey(int key);

    /// The lowest key from 1 to `items.size()` whose Desc equals `desc`, else 0.
    int getPoleKeyByDesc(const QString& desc);

    /// Empties the fields and the blocks; the catalogue stays.
    void Clear();

    /// Stores a copy of `item` under `key`, in place of any record there.
    void AddPoleToBD(int key, const T20Item& item);

    /// FA_NEED of the record; a missing key is inserted blank.
    bool isItemNEED(int key);

    /// True if the field stands on the receipt (Size above 0); a missing key is inserted blank.
    bool isItemVisibled(int key);

    // The catalogue, in its three generations. The constructor takes the last.
    void InitPolesLabelsCmn();
    void InitPolesLabelsV01();
    void InitPolesLabelsV02();
    void InitPolesLabelsV03();

    // Blocks and lines.

    /// The highest number of a line that a block may hold here. Templates in use end at 255; a field beyond
    /// this limit belongs to no line.
    static constexpr int kLineLimit = 65535;

    /// Number of blocks of a receipt.
    static constexpr int kBlockCount = 10;

    /// Rebuilds `blocks` from the visible fields; leaves them alone if there are no fields at all.
    void ReComputeBDBlocks();

    /// For each of `count` blocks the highest line number of its visible fields, 0 if it has none; an empty
    /// list if there are no fields at all.
    QList<int> ComputeMaxRowInAllBlocks(int count);

    /// True if a visible field starts exactly on this cell, and always if there are no fields at all.
    bool isCellBLXTaken(int block, int line, int x);

    // Reads of `blocks`. A block or line that does not exist counts as an empty one; on an empty line
    // getLineX2Y(), getLineX2X() and getLineFont() give 0.
    bool isLineHavePoles(int block, int line) const;
    int getLineKolPoley(int block, int line) const;
    int getLineX2Y(int block, int line) const;
    int getLineX2X(int block, int line) const;
    int getLineFont(int block, int line) const;

    /// A copy of the leftmost field of the line; a blank record on an empty line.
    T20Item getLineFirstPole(int block, int line) const;

    /// Moves the visible fields of `block` from `line` on one line down. Does nothing without fields or if
    /// the block has no such line. `blocks` is not recomputed.
    void AddLineInBlock(int block, int line);

    /// Moves the visible fields of `block` beyond `line` one line up. Does nothing without fields or if the
    /// block has no such line. `blocks` is not recomputed.
    void DelLineInBlock(int block, int line);

    // Reading of template files. The readers overwrite records key by key and never clear the store; each
    // returns 1 if `lines` is empty, else 0.

    /// Puts into `votes` five counters of how many lines look like each format: 1 "old, 20+[str]",
    /// 2 "new, 9*9", 3 "new, 19+str", 4 "new, 26+str"; counter 0 is not used.
    int LoadFrom_AnalizeType(const QStringList& lines, QList<int>& votes) const;

    /// Reads "old, 20+[str]" if `old`, else "new, 19+str".
    int LoadFromListV01(const QStringList& lines, bool old);

    /// Reads "new, 9*9".
    int LoadFromListV02(const QStringList& lines);

    /// Reads "new, 26+str".
    int LoadFromListV04(const QStringList& lines);

    // Writing. Each clears `rows` first and makes one row of each record, in ascending key order.

    /// Writes "new, 26+str". Returns 0, or -1 for an empty store.
    int SaveToListWMask(QStringList& rows) const;

    /// Writes "new, 19+str". Returns 0, or -1 for an empty store.
    int SaveToList(QStringList& rows) const;

    /// Writes the names with a header row. Returns 0, or 1 for an empty store, which has no header either.
    int ExportNameList(QStringList& rows) const;

    /// Writes the masks with a header row. Returns 0, or 1 for an empty store, which has no header either.
    int ExportMaskList(QStringList& rows) const;

    // Rows of the device's table 20.

    /// Appends the records of all fields to the array `out`, four for each key: parameters 1 to 6, 7 to 12, 13 to 18
    /// and 19. Returns 0, or 1 for an empty store.
    int SaveAsJsonV01(Json::Value& out, int subTable);

    /// Appends one record with the six members of a row of the device.
    static void SaveAsJsonV01SaveRecord(Json::Value& out, int t, int s, int r, int p1, int p2,
                                        const QString& v);

    // Hexadecimal texts of a record; only the low byte of each number is used.
    /// The six bytes in front of the parameters; `row` counts from 0, `length` is in bytes.
    static QString getStartStr(unsigned short first, unsigned short last, unsigned short row,
                               unsigned short length);
    /// The fourteen bytes of one parameter.
    static QString getStdParamStr(unsigned short tag, unsigned short bits, unsigned short value);
    // The parameters of one record; a missing key is inserted blank.
    QString getParamsStr0106(int key);
    QString getParamsStr0712(int key);
    QString getParamsStr1318(int key);
    QString getParamsStr1919(int key);

    /// Checks every key from 1 to `items.size()` and puts one line into `messages` for each finding.
    ///
    /// With `fix` a placement out of range is reported as corrected and is no error; the store keeps its
    /// values all the same. Returns the number of keys with errors, or -1 for an empty store.
    int CheckBDCorrect(int blockCount, QStringList& messages, bool fix) const;

    QStringList PolesLabels;
    QStringList PolesLabelsView;
    QMap<int, T20Item> items;
    QList<T_SHBlock> blocks;

private:
    template <typename Predicate>
    bool anyItem(Predicate holds);
    template <typename Visit>
    void forEachItem(Visit visit);
    QString paramsText(int key, std::size_t first, std::size_t last);
    const T_Line* lineAt(int block, int line) const;
    void setCatalogueDesc(T20Item& item, int key) const;
    void setFileOrCatalogueDesc(T20Item& item, int key, QStringView column) const;
};
