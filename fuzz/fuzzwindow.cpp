#include "fuzz/fuzzwindow.h"

#include "app/csettings.h"
#include "fuzz/templatechecks.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <QTextEdit>

#include <cstdlib>

namespace {

/// What the font library keeps until the process ends is not ours.
constexpr char kLeakSuppressions[] = "leak:libfontconfig\n";

QString folderTemplate()
{
    const QString inMemory = QStringLiteral("/dev/shm");
    return (QFileInfo(inMemory).isWritable() ? inMemory : QDir::tempPath()) + QStringLiteral("/fuzz-XXXXXX");
}

void makeApplication()
{
    static int count = 1;
    static char name[] = "fuzz";
    static char* arguments[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static const QApplication application(count, arguments);
}

} // namespace

extern "C" const char* __lsan_default_suppressions()
{
    return kLeakSuppressions;
}

FuzzWindow& FuzzWindow::instance()
{
    makeApplication();
    static auto& window = *new FuzzWindow;
    return window;
}

FuzzWindow::FuzzWindow()
    : m_folder(folderTemplate())
    , m_window(makeWindow())
    , m_probe(m_window)
{
    QCoreApplication::instance()->installEventFilter(this);
    std::atexit([] { instance().m_folder.remove(); });
}

MainWindow& FuzzWindow::makeWindow()
{
    require(m_folder.isValid(), "there is a folder");
    Settings.pathApp = m_folder.path();
    return *new MainWindow;
}

void FuzzWindow::reset()
{
    m_probe.bd().Clear();
    m_probe.freeStrings().clear();
    m_probe.setKeepTempFiles(true);
    m_window.findChild<QTextEdit*>(QStringLiteral("teLog"))->clear();
    m_boxCount = 0;
}

void FuzzWindow::putFile(const QString& name, const QByteArray& bytes) const
{
    QFile file(filePath(name));
    require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(), "a file can be written");
}

bool FuzzWindow::eventFilter(QObject* watched, QEvent* event)
{
    auto* const box = event->type() == QEvent::Show ? qobject_cast<QMessageBox*>(watched) : nullptr;
    if (box != nullptr) {
        ++m_boxCount;
        QMetaObject::invokeMethod(box, "accept", Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}
