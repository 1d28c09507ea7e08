#include "Failing.h"
#include "platform/ControlArray.h"
#include "platform/PlanItems.h"

#include <QGraphicsScene>
#include <QLabel>

#include <gtest/gtest.h>

#include <algorithm>

using namespace regalon;
using regalon::test::failureOf;

namespace {

using Pictures = ControlArray<PictureItem>;

TEST(ControlArray, StartsWithItsTemplate) {
    Pictures array(QStringLiteral("imglocation"));
    EXPECT_EQ(array.Count(), 1);
    EXPECT_EQ(array[0].data(PlanData::ArrayName).toString(), QStringLiteral("imglocation"));
    EXPECT_EQ(array[0].index(), 0);
}

TEST(ControlArray, CountIsReadAfterTheLoad) {
    Pictures array(QStringLiteral("imglocation"));
    array.Load(array.Count());
    array.Load(array.Count());
    EXPECT_EQ(array.Count(), 3);
    EXPECT_EQ(array[array.Count() - 1].data(PlanData::Index).toInt(), 2);
}

TEST(ControlArray, MissingElementsRaise340) {
    Pictures array(QStringLiteral("imglocation"));
    EXPECT_EQ(failureOf([&] { array[1]; }), RunTime::ControlArrayElement);
    EXPECT_EQ(failureOf([&] { array[-1]; }), RunTime::ControlArrayElement);
    EXPECT_EQ(failureOf([&] { array.Unload(1); }), RunTime::ControlArrayElement);
    array.Load(1);
    array.Unload(1);
    EXPECT_EQ(failureOf([&] { array[1]; }), RunTime::ControlArrayElement);
}

TEST(ControlArray, TheTemplateIsNeverUnloadedNorLoadedAgain) {
    Pictures array(QStringLiteral("imglocation"));
    EXPECT_EQ(failureOf([&] { array.Unload(0); }), RunTime::CannotUnloadDesignControl);
    EXPECT_EQ(failureOf([&] { array.Load(0); }), RunTime::ObjectAlreadyLoaded);
    EXPECT_EQ(array.Count(), 1);
}

TEST(ControlArray, UnloadingUpwardsLeavesTheTemplate) {
    Pictures array(QStringLiteral("imglocation"));
    for (int i = 1; i <= 5; ++i)
        array.Load(i);
    const int count = array.Count();
    for (int i = 1; i < count; ++i)
        array.Unload(i);
    EXPECT_EQ(array.Count(), 1);
    array.Load(array.Count());
    EXPECT_EQ(array[1].index(), 1);
}

TEST(ControlArray, ElementsWithGapsAreWalkedInOrder) {
    Pictures array(QStringLiteral("a"));
    array.Load(7);
    array.Load(3);
    QList<int> seen;
    array.forEach([&seen](const PictureItem& item) { seen.append(item.index()); });
    EXPECT_EQ(seen, (QList<int>{0, 3, 7}));
    EXPECT_EQ(array.Count(), 3);
    EXPECT_TRUE(array.exists(3));
    EXPECT_FALSE(array.exists(4));
}

TEST(ControlArray, ALoadedElementTakesTheDesignButIsHidden) {
    QGraphicsScene scene;
    ControlArray<LineItem> lines(QStringLiteral("lnnFrameBookStand"));
    scene.addItem(&lines[0]);
    lines[0].setEnds(3720, 10320, 3720, 11070);
    LineItem& loaded = lines.Load(1);
    EXPECT_EQ(loaded.x1(), 3720);
    EXPECT_EQ(loaded.y1(), 10320);
    EXPECT_EQ(loaded.y2(), 11070);
    EXPECT_FALSE(loaded.isVisible());
    EXPECT_EQ(loaded.scene(), &scene);
    lines.Unload(1);
    EXPECT_EQ(scene.items().size(), 1);
}

/// Pictures whose template lies on a scene, as on a plan.
class ControlArrayOnAScene : public ::testing::Test {
protected:
    ControlArrayOnAScene() : array(QStringLiteral("imglocation")) { scene.addItem(&array[0]); }

    QGraphicsScene scene;
    Pictures array;
};

TEST_F(ControlArrayOnAScene, AReusedElementHasTheDesignOfANewOne) {
    array.setReuse(true);
    const PictureItem* first = &array.Load(1);
    array[1].setLeft(300);
    array[1].setVisible(true);
    array.Unload(1);
    EXPECT_EQ(array.Count(), 1);
    EXPECT_FALSE(array.exists(1));
    EXPECT_EQ(failureOf([&] { array[1]; }), RunTime::ControlArrayElement);
    PictureItem& again = array.Load(1);
    EXPECT_EQ(&again, first);
    EXPECT_EQ(again.left(), 0);
    EXPECT_EQ(again.index(), 1);
    EXPECT_TRUE(again.isVisible()) << "whoever draws anew says what is seen";
    EXPECT_EQ(array.Count(), 2);
}

TEST_F(ControlArrayOnAScene, ARetiredElementIsSeenNowhereAndFoundUnderNoNameUntilItIsReused) {
    array.setReuse(true);
    const PictureItem* first = &array.Load(1);
    array[1].setVisible(true);
    array.Unload(1);
    array.retireWaiting();
    EXPECT_FALSE(first->isVisible());
    EXPECT_FALSE(first->data(PlanData::ArrayName).isValid());
    const PictureItem& again = array.Load(1);
    ASSERT_EQ(&again, first);
    EXPECT_EQ(again.data(PlanData::ArrayName), QStringLiteral("imglocation"));
    EXPECT_EQ(again.data(PlanData::Index), 1);
    EXPECT_FALSE(again.isVisible());
}

TEST_F(ControlArrayOnAScene, RetiringTakesNothingFromTheElementsInUse) {
    array.setReuse(true);
    array.Load(1).setVisible(true);
    array.Load(2).setVisible(true);
    array.Unload(2);
    array.retireWaiting();
    EXPECT_TRUE(array[1].isVisible());
    EXPECT_EQ(array[1].data(PlanData::ArrayName), QStringLiteral("imglocation"));
}

TEST_F(ControlArrayOnAScene, WhatNobodyReusedGoesWithTheReuse) {
    array.Load(1);
    array.Load(2);
    array.setReuse(true);
    array.Unload(1);
    array.Unload(2);
    array.Load(1);
    EXPECT_EQ(scene.items().size(), 3);
    array.setReuse(false);
    EXPECT_EQ(scene.items().size(), 2);
    array.Unload(1);
    EXPECT_EQ(scene.items().size(), 1);
}

TEST(ControlArray, AMakerServesAnyControl) {
    QWidget parent;
    ControlArray<QLabel> labels(QStringLiteral("lblRow"), [&parent](const QString& name, int index) {
        auto label = std::make_unique<QLabel>(&parent);
        label->setObjectName(name + QString::number(index));
        return label;
    });
    EXPECT_EQ(labels.Load(2).objectName(), QStringLiteral("lblRow2"));
}

}  // namespace
