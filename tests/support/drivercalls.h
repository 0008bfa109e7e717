#pragma once

#include <QString>
#include <QStringList>

// Calls of a driver as their record has them: `setMode(4)`.

/// What a session asks about a call that has failed, if no parameter was at fault.
inline const QStringList kDiagnosis{QStringLiteral("getResultCode()"),
                                    QStringLiteral("getResultDescription(4096)"),
                                    QStringLiteral("getBadParam()")};

/// The name of a call: `setMode` of `setMode(4)`.
inline QString operationOf(const QString& call)
{
    return call.section(u'(', 0, 0);
}

/// True for the calls that never fail visibly.
inline bool isGetter(const QString& call)
{
    return call.startsWith(u"get");
}

/// True for the calls that only ask why another one failed.
inline bool isDiagnosis(const QString& call)
{
    const QString operation = operationOf(call);
    return operation == u"getResultCode" || operation == u"getResultDescription" ||
           operation == u"getBadParam" || operation == u"getBadParamDescription";
}
