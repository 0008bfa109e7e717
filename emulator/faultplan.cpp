#include "emulator/faultplan.h"

#include <QFile>
#include <QFileInfo>

namespace emulator {

bool FaultPlan::set(const QByteArray& json)
{
    const std::optional<QList<FaultRule>> rules = faultRulesFromJson(json);
    if (!rules)
        return false;
    m_rules = *rules;
    m_text = json;
    m_count = 0;
    return true;
}

void FaultPlan::clear()
{
    m_rules.clear();
    m_text.clear();
    m_count = 0;
}

void FaultPlan::forgetFile()
{
    m_mark = {};
}

void FaultPlan::watch(const QString& path)
{
    FileMark mark;
    QFileInfo info(path);
    if (info.isFile())
        mark = {info.lastModified(), info.size()};
    if (mark == m_mark)
        return;
    m_mark = mark;
    QFile file(path);
    if (!info.isFile() || !file.open(QIODevice::ReadOnly) || !set(file.readAll()))
        clear();
}

std::optional<Fault> FaultPlan::next(const QString& operation, bool diagnostic)
{
    if (!diagnostic)
        ++m_count;
    std::optional<Fault> fault;
    for (FaultRule& rule : m_rules)
        if (rule.matches(operation, diagnostic) && rule.strikes() && !fault)
            fault = rule.fault;
    return fault;
}

} // namespace emulator
