#pragma once

#include <QString>
#include <QVector>

/// Each byte as two hexadecimal digits, with `separator` between them; all of it in upper case.
QString baToString(const QVector<unsigned char>& bytes, const QString& separator);
