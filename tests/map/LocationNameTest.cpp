#include "map/LocationName.h"
#include "map/LocationNameBatches.h"
#include "platform/RunTimeError.h"

#include <gtest/gtest.h>

namespace regalon {
namespace {

TEST(LocationName, HasAddressFamilyAndIndexWithoutLeadingZeros) {
    EXPECT_EQ(buildLocationName({2, 5, 1, 3}, QStringLiteral("LA"), 117), QStringLiteral("2_5_1_3_LA_117"));
}

TEST(LocationName, SplitsIntoItsFields) {
    const TagFields fields(QStringLiteral("2_15_1_3_LA_117"));
    EXPECT_EQ(fields.number(LocationField::Rank), 2);
    EXPECT_EQ(fields.number(LocationField::Stand), 15);
    EXPECT_EQ(fields.number(LocationField::Shelf), 1);
    EXPECT_EQ(fields.number(LocationField::Location), 3);
    EXPECT_EQ(fields.at(LocationField::Family), QStringLiteral("LA"));
}

TEST(StandTag, HoldsRowStandAndIcon) {
    const TagFields fields(buildStandTag(3, 12, QStringLiteral("R3_S_12.ico")));
    EXPECT_EQ(fields.number(StandField::Rank), 3);
    EXPECT_EQ(fields.number(StandField::Stand), 12);
    EXPECT_EQ(buildStandTag(1, 2, {}), QStringLiteral("R_1_2_"));
}

TEST(TagFields, AnEmptyTagHasNoFields) {
    EXPECT_TRUE(TagFields(QString()).isEmpty());
    EXPECT_TRUE(TagFields(QStringLiteral("")).isEmpty());
    EXPECT_FALSE(TagFields(QStringLiteral("_")).isEmpty());
}

qint32 numberErrorOf(const QString& tag, int field) {
    try {
        (void)TagFields(tag).number(field);
    } catch (const RunTimeError& error) {
        return error.number();
    }
    return 0;
}

TEST(TagFields, ATagThatIsTooShortIsABoundsError) {
    EXPECT_EQ(numberErrorOf(QString(), 0), 9);
    EXPECT_EQ(numberErrorOf(QStringLiteral("1_2"), 2), 9);
    EXPECT_EQ(numberErrorOf(QStringLiteral("1_2"), -1), 9);
}

TEST(TagFields, AFieldThatIsNoNumberIsAMismatch) {
    EXPECT_EQ(numberErrorOf(QStringLiteral("1_x"), 1), 13);
    EXPECT_EQ(numberErrorOf(QStringLiteral("1_"), 1), 13);
    EXPECT_EQ(numberErrorOf(QStringLiteral("1_40000"), 1), 6);
}

QString nameOfLength(qsizetype length) {
    return QString(length, QLatin1Char('n'));
}

void addNames(LocationNameBatches& batches, int count, qsizetype length) {
    for (int added = 0; added < count; ++added)
        batches.add(nameOfLength(length));
}

qsizetype namesIn(const QString& joined) {
    return joined.isEmpty() ? 0 : joined.count(QLatin1Char(',')) + 1;
}

TEST(LocationNameBatches, WithoutNamesAreThreeEmptyTexts) {
    for (const QString& text : LocationNameBatches().joined())
        EXPECT_EQ(text, QString());
}

TEST(LocationNameBatches, FirstAndSecondHold251NamesAndTheThirdTheRest) {
    LocationNameBatches batches;
    addNames(batches, 251, 3);
    EXPECT_EQ(namesIn(batches.joined()[0]), 251);
    EXPECT_EQ(namesIn(batches.joined()[1]), 0);
    addNames(batches, 252, 3);
    EXPECT_EQ(namesIn(batches.joined()[0]), 251);
    EXPECT_EQ(namesIn(batches.joined()[1]), 251);
    EXPECT_EQ(namesIn(batches.joined()[2]), 1);
    addNames(batches, 1000, 3);
    EXPECT_EQ(namesIn(batches.joined()[1]), 251);
    EXPECT_EQ(namesIn(batches.joined()[2]), 1001);
}

TEST(LocationNameBatches, KeepTheOrderOfTheNames) {
    LocationNameBatches batches;
    batches.add(QStringLiteral("1_1_1_1_LA_2"));
    batches.add(QStringLiteral("1_1_1_2_LB_3"));
    EXPECT_EQ(batches.joined()[0], QStringLiteral("1_1_1_1_LA_2,1_1_1_2_LB_3"));
}

TEST(LocationNameBatches, TheLimitIsOneOfLengthAndNotOfCount) {
    LocationNameBatches of14;
    addNames(of14, 251, 14);
    EXPECT_EQ(of14.joined()[0].size(), 3764);
    EXPECT_LT(of14.joined()[0].size(), LocationNameBatches::kTextLimit);
    LocationNameBatches of15;
    addNames(of15, 251, 15);
    EXPECT_EQ(of15.joined()[0].size(), 4015);
    EXPECT_GE(of15.joined()[0].size(), LocationNameBatches::kTextLimit);
}

}  // namespace
}  // namespace regalon
