#include "tests/architecture/parts.h"

namespace {

Part part(const QString& name, const QString& files, const QString& target, const QString& knows,
          const QString& qtModules, bool usesJsonCpp)
{
    return {name,
            QRegularExpression(QRegularExpression::anchoredPattern(files)),
            target,
            knows.split(' ', Qt::SkipEmptyParts),
            qtModules.split(' ', Qt::SkipEmptyParts),
            usesJsonCpp};
}

} // namespace

const QList<Part>& parts()
{
    static const QString core = "QtCore";
    static const QString window = "QtCore QtGui QtWidgets QtConcurrent QtCore5Compat";
    static const QString all = "contract protocol model session layout items";
    // clang-format off
    static const QList<Part> table{
        //   name        files                                                        target                knows                Qt modules  jsoncpp
        part("contract", "device/ifpax\\.h",                                          "shablonist_device",   "",                  "",         false),
        part("protocol", "device/(batostring|ccommtlv|hexdigit|jsonmember|regularfile|tlvrecord)\\.(h|cpp)", "shablonist_protocol", "",               core,       true),
        part("model",    "model/\\w+\\.(h|cpp)",                                      "shablonist_model",    "protocol",          core,       true),
        part("window",   "(app|view|editing|device|workflows|console)/mainwindow\\w*\\.(h|cpp)", "shablonist_window", all,        window,     true),
        part("window",   "device/dlgprintrcp\\.(h|cpp)",                              "shablonist_window",   all,                 window,     true),
        part("session",  "device/\\w+\\.(h|cpp)",                                     "shablonist_device",   "contract protocol", core,       true),
        part("layout",   "view/guimaket\\.(h|cpp)",                                   "shablonist_layout",   "model",             core,       false),
        part("items",    "view/item\\w+\\.(h|cpp)",                                   "shablonist_items",    "",                  "QtCore QtGui QtWidgets", false),
        part("program",  "app/main\\.cpp",                                            "shablonist",          all + " window",     window,     true),
        part("window",   "(app|editing|workflows|console)/\\w+\\.(h|cpp)",            "shablonist_window",   all,                 window,     true),
        part("emulator", "emulator/\\w+\\.(h|cpp)",                                   "fpax",                "contract",          "QtCore QtGui QtWidgets QtCore5Compat", false),
    };
    // clang-format on
    return table;
}

const Part* partOf(const QString& path)
{
    for (const Part& part : parts())
        if (part.files.match(path).hasMatch())
            return &part;
    return nullptr;
}
