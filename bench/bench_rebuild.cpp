#include "bench/measure.h"
#include "bench/windowprobe_bench.h"

#include <QApplication>
#include <QGraphicsItem>
#include <QGraphicsProxyWidget>
#include <QGraphicsView>
#include <QPushButton>
#include <QTextEdit>

#include <cstdio>

namespace {

/// As little as an item of a scene can be.
class BareItem : public QGraphicsItem
{
public:
    QRectF boundingRect() const override { return QRectF(0, 0, 100, 20); }
    void paint(QPainter*, const QStyleOptionGraphicsItem*, QWidget*) override {}
};

void fillWithBareItems(QGraphicsScene& scene, int count)
{
    scene.clear();
    for (int i = 0; i < count; ++i)
        scene.addItem(new BareItem);
    scene.addWidget(new QPushButton(QStringLiteral("+")));
    scene.addWidget(new QPushButton(QStringLiteral("-")));
}

int countBareItems(const QGraphicsScene& scene)
{
    int count = 0;
    const auto items = scene.items();
    for (const QGraphicsItem* const item : items)
        count += item->isWidget() ? 0 : 1;
    return count;
}

} // namespace

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);

    MainWindow window;
    const WindowProbe probe(window);
    window.show();
    if (!probe.openSample())
        return 2;
    const int count = countBareItems(probe.scene());

    QGraphicsScene bareScene;
    QGraphicsView bareView(&bareScene);
    bareView.setAlignment(Qt::AlignLeft | Qt::AlignTop);
    bareView.resize(window.size());
    bareView.show();

    // What a round leaves to the event loop, painting above all, is done before the next one starts.
    auto* const log = window.findChild<QTextEdit*>(QStringLiteral("teLog"));
    const auto settle = [log] {
        log->clear();
        QCoreApplication::processEvents();
    };
    MeasureTable table;
    table.compare(
        "rebuilding the view, all its " + std::to_string(count) + " items", 301, 1.3,
        [&] {
            settle();
            return secondsOf([&] { probe.rebuildView(); });
        },
        1,
        [&] {
            settle();
            return secondsOf([&] { fillWithBareItems(bareScene, count); });
        },
        1);
    return table.exitCode();
}
