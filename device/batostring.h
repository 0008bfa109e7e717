#pragma once

#include <QString>
#include <QVector>

/// Each byte as two upper-case hexadecimal digits, with `separator` between them.
QString baToString(const QVector<unsigned char>& bytes, const QString& separator);
