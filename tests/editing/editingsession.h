#pragma once

#include "support/session.h"

#include <QMap>
#include <QStringList>

class QGraphicsProxyWidget;

/// A user before a window that shows a template and whose timer loops run.
class EditingSession : public Session
{
public:
    using Records = QMap<int, BD_T20Items::T20Item>;

    /// Opens a file of `fields`, the first of which has the key 1.
    explicit EditingSession(const QList<FieldRow>& fields);

    /// Chooses a file of `fields` in "Открыть..." and waits until the loop has seen it.
    void open(const QList<FieldRow>& fields);

    /// Makes the window the active one again, which a window manager does after a dialog.
    void activate();

    /// Writes a file of `fields` and returns its path.
    QString write(const QList<FieldRow>& fields);

    /// All records as they are now.
    Records records() const { return probe.bd().items; }

    /// What differs from `before`, as "key.Property=new value" in key order.
    QStringList changesSince(const Records& before) const;

    /// Waits until the selection loop has nothing left to do.
    void settle();

    /// The "+" or "-" button on the scene; null if there is none.
    QGraphicsProxyWidget* lineButton(const QString& text) const;

private:
    int m_files = 0;
};

/// Nine fields, placed and not placed, mandatory and not, in the blocks 0, 1 and 9.
///
/// | key | block | line | x  | size |                                    |
/// |-----|-------|------|----|------|------------------------------------|
/// | 1   | 0     | 1    | 0  | 10   | blocks 0, 1 and 6 only             |
/// | 2   | 0     | 2    | 2  | 12   | mandatory                          |
/// | 3   | 1     | 1    | 0  | 6    | block 1 only                       |
/// | 4   | 1     | 1    | 20 | 5    |                                    |
/// | 5   | 1     | 1    | 40 | 0    |                                    |
/// | 6   | 1     | 1    | 50 | 0    | mandatory                          |
/// | 7   | 1     | 4    | 0  | 10   | double height; lines 2, 3 are empty |
/// | 8   | 1     | 1    | 0  | 0    | its cell is taken                  |
/// | 9   | 9     | 1    | 0  | 8    |                                    |
QList<FieldRow> workFields();
