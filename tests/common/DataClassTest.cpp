#include "GatewayFixture.h"
#include "common/DataClass.h"
#include "common/modSQL.h"
#include "platform/Convert.h"

namespace regalon {
namespace {

using namespace Qt::StringLiterals;

/// A data class as the system's own are: a keyed read, a list and calls.
class clsProbe : public DataClass {
public:
    explicit clsProbe(AppContext& context, const QString& reportName = u"clsProbe"_s)
        : DataClass(context, reportName) {}

    bool GetRow(int id, QString& name, double& weight) {
        bool found = false;
        const bool ended = trap("GetRow", [&] {
            openRead(u"select name,weight from t_rows(nolock) where id = "_s + SqlNumber(id));
            if (!Recordset.Eof()) {
                name = ToText(NullToValue(Recordset.Value("name"), QString()));
                weight = ToDouble(NullToValue(Recordset.Value("weight"), 0));
                found = true;
            }
        });
        if (!ended) {
            name.clear();
            weight = 0;
        }
        return found;
    }

    bool Answer(int value, const QString& text, QString& strErrDesc) {
        return callProcedure("Answer", u"dbo.t_answer"_s, {{"@Return", value}, {"@Text", text}}, strErrDesc);
    }

    bool NoMessage(int value, QString& strErrDesc) {
        return callProcedure("NoMessage", u"t_no_message"_s, {{"@Return", value}}, strErrDesc);
    }

    bool Refuse(QString& strErrDesc) { return callProcedure("Refuse", u"t_refuse"_s, {}, strErrDesc); }

    int FirstId() { return ToInt32(Recordset.Value("id")); }
    int recordsetState() const { return Recordset.State(); }
};

class DataClassTest : public GatewayTest {
protected:
    clsProbe probe{context};
};

TEST_F(DataClassTest, NullColumnReadsAsItsDefault) {
    QString name = u"przed"_s;
    double weight = 99;
    EXPECT_TRUE(probe.GetRow(2, name, weight));
    EXPECT_EQ(name, QString());
    EXPECT_EQ(weight, 0);
    EXPECT_EQ(boxes.count(), 0);
}

TEST_F(DataClassTest, ReadWithoutARowLeavesResultFalseAndOutputsAsTheyWere) {
    QString name = u"przed"_s;
    double weight = 99;
    EXPECT_FALSE(probe.GetRow(77, name, weight));
    EXPECT_EQ(name, u"przed"_s);
    EXPECT_EQ(weight, 99);
}

TEST_F(DataClassTest, ReadThatFailsReportsAndResetsItsOutputs) {
    ASSERT_TRUE(warehouse.run(u"drop table t_rows"_s)) << qPrintable(warehouse.why());
    QString name = u"przed"_s;
    double weight = 99;
    EXPECT_FALSE(probe.GetRow(1, name, weight));
    EXPECT_EQ(name, QString());
    EXPECT_EQ(weight, 0);
    ASSERT_EQ(boxes.count(), 1);
    EXPECT_EQ(boxes.last().Title, u"Error - clsProbe [GetRow]"_s);
    EXPECT_EQ(boxes.last().Text, u"-2147217900\r\nInvalid object name 't_rows'."_s);
}

TEST_F(DataClassTest, ReadClosesWhatThePreviousReadLeftOpen) {
    QString name;
    double weight = 0;
    EXPECT_TRUE(probe.GetRow(1, name, weight));
    EXPECT_EQ(probe.recordsetState(), 1);
    EXPECT_TRUE(probe.GetRow(3, name, weight));
    EXPECT_EQ(name, u"mąka"_s);
    EXPECT_EQ(weight, 10);
}

TEST_F(DataClassTest, ReturnOfOneAnswersFalseAndHandsOverTheText) {
    QString message;
    EXPECT_FALSE(probe.Answer(1, u"Brak miejsca na regale"_s, message));
    EXPECT_EQ(message, u"Brak miejsca na regale"_s);
    EXPECT_EQ(boxes.count(), 0);
}

TEST_F(DataClassTest, ReturnOfZeroIsSuccess) {
    QString message;
    EXPECT_TRUE(probe.Answer(0, u"gotowe"_s, message));
    EXPECT_EQ(message, u"gotowe"_s);
}

TEST_F(DataClassTest, NegativeReturnIsSuccess) {
    QString message;
    EXPECT_TRUE(probe.Answer(-6, u"x"_s, message));
}

TEST_F(DataClassTest, NullMessageReadsAsEmptyText) {
    QString message = u"przed"_s;
    EXPECT_FALSE(probe.NoMessage(1, message));
    EXPECT_EQ(message, QString());
}

TEST_F(DataClassTest, FailingCallReportsMarkedTextAndKeepsTheMessage) {
    QString message = u"przed"_s;
    EXPECT_FALSE(probe.Refuse(message));
    EXPECT_EQ(message, u"przed"_s);
    ASSERT_EQ(boxes.count(), 1);
    EXPECT_EQ(boxes.last().Title, u"Error - clsProbe [Refuse]"_s);
    EXPECT_EQ(boxes.last().Text, u"Lokalizacja zajęta"_s);
    EXPECT_EQ(context.ErrorService->LastErrorDescription(),
              u"-2147217900\r\nSerwer odmawia\n##Lokalizacja zajęta"_s);
}

TEST_F(DataClassTest, FailingEcexProcedureAnswersTrueAndLeavesAClosedRecordset) {
    EXPECT_TRUE(probe.EcexProcedure(u"select id from t_rows"_s));
    EXPECT_EQ(probe.recordsetState(), 1);
    EXPECT_TRUE(probe.EcexProcedure(u"select id from t_missing"_s));
    EXPECT_EQ(probe.recordsetState(), 0);
    ASSERT_EQ(boxes.count(), 1);
    EXPECT_EQ(boxes.last().Title, u"Error - clsProbe [EcexProcedure]"_s);

    EXPECT_FALSE(WindowTrap("frmProbe - cmdRead_Click", [&] { probe.FirstId(); }));
    EXPECT_EQ(boxes.last().Title, u"frmProbe - cmdRead_Click"_s);
    EXPECT_TRUE(boxes.last().Text.startsWith(u"3704\r\n"_s)) << qPrintable(boxes.last().Text);
}

TEST_F(DataClassTest, NameUnderWhichItReportsIsHandedIn) {
    clsProbe other(context, u"clsMagSurInput"_s);
    other.EcexProcedure(u"select id from t_missing"_s);
    EXPECT_EQ(boxes.last().Title, u"Error - clsMagSurInput [EcexProcedure]"_s);
}

TEST_F(DataClassTest, ExecTextPassesItsArgumentsByPosition) {
    QString message;
    EXPECT_FALSE(probe.EcexProcedureParam(u"exec t_answer 5,N'Powód',NULL"_s, message));
    EXPECT_EQ(message, u"Powód"_s);
    EXPECT_TRUE(probe.EcexProcedureParam(u"exec dbo.t_answer -1,N'Powód'"_s, message));
}

TEST_F(DataClassTest, CommaInsideAQuotedTextShiftsLaterParameters) {
    QString message;
    EXPECT_TRUE(probe.EcexProcedureParam(u"exec t_words N'a',N'b,c',N'd'"_s, message));
    // The first argument keeps the blank in front of it and so its quotes; the third lost its place to the
    // comma.
    EXPECT_EQ(message, u" N'a'|b|c'"_s);
}

TEST_F(DataClassTest, DoubledApostropheAndInnerPrefixAreLost) {
    QString message;
    EXPECT_TRUE(probe.EcexProcedureParam(u"exec t_words x,N'O''Brien',N'aN'b'"_s, message));
    EXPECT_EQ(message, u" x|OBrien|ab"_s);
}

TEST_F(DataClassTest, PrefixIsRemovedInItsExactCaseOnly) {
    QString message;
    EXPECT_TRUE(probe.EcexProcedureParam(u"exec t_words x,n'b','c'"_s, message));
    EXPECT_EQ(message, u" x|n'b'|'c'"_s);
}

TEST_F(DataClassTest, FreeNullIsTheWordForATextParameter) {
    QString message;
    EXPECT_TRUE(probe.EcexProcedureParam(u"exec t_words x,NULL,N'c'"_s, message));
    EXPECT_EQ(message, u" x|NULL|c"_s);
}

TEST_F(DataClassTest, NumbersInAnExecTextMayHoldADecimalPoint) {
    QString message;
    EXPECT_TRUE(probe.EcexProcedureParam(u"exec t_numbers 1,2,12.5,0.25,1"_s, message));
    EXPECT_EQ(message, u"1|2|12.500000|0.25|1"_s);
}

TEST_F(DataClassTest, MoreArgumentsThanParametersFail) {
    QString message = u"przed"_s;
    EXPECT_FALSE(probe.EcexProcedureParam(u"exec t_answer 0,a,b,c,d"_s, message));
    EXPECT_EQ(message, u"przed"_s);
    EXPECT_EQ(boxes.last().Title, u"Error - clsProbe [EcexProcedureParam]"_s);
    EXPECT_EQ(context.ErrorService->LastErrorNumber(), 3265);
}

TEST_F(DataClassTest, ExecTextWithoutArgumentsFails) {
    QString message;
    EXPECT_FALSE(probe.EcexProcedureParam(u"exec t_answer"_s, message));
    EXPECT_EQ(context.ErrorService->LastErrorNumber(), 5);
}

}  // namespace
}  // namespace regalon
