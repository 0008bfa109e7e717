#include "support/expectedscene.h"
#include "support/session.h"

#include <QComboBox>
#include <QGraphicsView>
#include <QLineEdit>
#include <QTest>

namespace {

const QString kCleared = QStringLiteral("Scene cleared!");

/// A user with a template on the tape and nothing new in the log.
struct TapeSession : Session
{
    TapeSession()
    {
        open(goodFile(3));
        QCOMPARE(robot.takeTexts(), QStringList());
        log.takeNew();
    }

    QComboBox* widths() const { return named<QComboBox>(window, "comboLentaSize"); }
    QString scaleText() const { return named<QLineEdit>(window, "lePolesMasshtab")->text(); }
    QTransform transform() const { return named<QGraphicsView>(window, "graphicsView_1")->transform(); }

    QStringList differences(int width) const
    {
        return sceneDifferences(probe.scene(), manyFields(3), {.width = width});
    }
};

} // namespace

/// Scale steps and tape widths that the lists of the window do not have by themselves.
class tst_ScaleAndWidth : public QObject
{
    Q_OBJECT

private slots:
    void stepOutsideTheListIsShownAsHundred_data();
    void stepOutsideTheListIsShownAsHundred();
    void stepBeyondTheEndsGoesNoFurther();
    void widthGoesByItsFirstTwoCharacters();
    void unknownWidthIsToldBeforeTheRedraw();
};

void tst_ScaleAndWidth::stepOutsideTheListIsShownAsHundred_data()
{
    QTest::addColumn<int>("step");
    for (const int step : {-1, 5, 9})
        QTest::addRow("%d", step) << step;
}

void tst_ScaleAndWidth::stepOutsideTheListIsShownAsHundred()
{
    QFETCH(const int, step);
    TapeSession s;
    s.click("btnScaleX20");
    QCOMPARE(s.scaleText(), QString("150%"));
    s.probe.maket().setScale(step);
    s.open(s.goodFile(2));
    QCOMPARE(s.scaleText(), QString("100%"));
    QCOMPARE(s.probe.maket().getScale(), step);
}

void tst_ScaleAndWidth::stepBeyondTheEndsGoesNoFurther()
{
    TapeSession s;
    const QTransform before = s.transform();
    s.probe.maket().setScale(9);
    s.click("btnScaleX20");
    QCOMPARE(s.probe.maket().getScale(), 9);
    QCOMPARE(s.transform(), before);
    s.probe.maket().setScale(-1);
    s.click("btnScaleX05");
    QCOMPARE(s.probe.maket().getScale(), -1);
    QCOMPARE(s.transform(), before);
    QCOMPARE(s.scaleText(), QString("100%"));
    QCOMPARE(s.log.takeNew(), QStringList());

    // The other button leads back.
    s.click("btnScaleX20");
    QCOMPARE(s.probe.maket().getScale(), 0);
    QCOMPARE(s.scaleText(), QString("44%"));
    QCOMPARE(s.transform().m11(), before.m11() * 1.5);
    s.probe.maket().setScale(9);
    s.click("btnScaleX05");
    QCOMPARE(s.probe.maket().getScale(), 8);
    QCOMPARE(s.scaleText(), QString("100%"));
}

void tst_ScaleAndWidth::widthGoesByItsFirstTwoCharacters()
{
    TapeSession s;
    s.widths()->addItems({"44 узкая", "57", "80x"});
    const struct
    {
        int index;
        int width;
    } steps[] = {{3, 384}, {4, 432}, {5, 576}};
    for (const auto& step : steps) {
        chooseInCombo(s.window, "comboLentaSize", step.index);
        QCOMPARE(s.probe.tapeWidth(), step.width);
        QCOMPARE(s.log.takeNew(), QStringList{kCleared});
        QCOMPARE(s.differences(step.width), QStringList());
    }
    QCOMPARE(s.robot.takeTexts(), QStringList());
}

void tst_ScaleAndWidth::unknownWidthIsToldBeforeTheRedraw()
{
    TapeSession s;
    s.widths()->addItems({"4", " 44мм", ""});
    QStringList logBehindTheBox;
    QStringList differences;
    s.robot.atEachBox([&](const DialogRobot::SeenBox&) {
        logBehindTheBox = s.log.takeNew();
        differences = s.differences(384);
    });
    for (const int index : {3, 4, 5}) {
        chooseInCombo(s.window, "comboLentaSize", 0);
        QCOMPARE(s.probe.tapeWidth(), 384);
        s.log.takeNew();
        chooseInCombo(s.window, "comboLentaSize", index);
        QCOMPARE(s.robot.takeTexts(), QStringList{"Неизвестная ширина ленты!"});
        // The tape stands behind the box as it was.
        QCOMPARE(logBehindTheBox, QStringList());
        QCOMPARE(differences, QStringList());
        QCOMPARE(s.log.takeNew(), QStringList{kCleared});
        QCOMPARE(s.probe.tapeWidth(), 576);
        QCOMPARE(s.differences(576), QStringList());
    }
}

QTEST_MAIN(tst_ScaleAndWidth)
#include "tst_scale_and_width.moc"
