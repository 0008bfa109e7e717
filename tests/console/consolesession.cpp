#include "console/consolesession.h"

ConsoleSession::ConsoleSession()
{
    typeWord(window, "SAM");
    log.takeNew();
}

QStringList ConsoleSession::check()
{
    callCommand(window, "IOINFO");
    return log.takeNew();
}

QStringList ConsoleSession::loadFile()
{
    probe.callLoadFile();
    return log.takeNew();
}
