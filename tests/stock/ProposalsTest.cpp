// The operations on proposed locations that the document services share.

#include "map/MapWarehouse.h"
#include "platform/MsgBox.h"
#include "stock/Proposals.h"

#include <gtest/gtest.h>

namespace regalon {
namespace {

using test::LocalWarehouse;
using test::MapWarehouse;

/// A service of proposals and nothing else.
class clsProbe : public Proposals {
public:
    explicit clsProbe(AppContext& context) : Proposals(context, QStringLiteral("clsProbe")) {}
};

/// Two proposals of one package, made by the window's own connection as the procedures make them.
class ProposalsTest : public testing::Test {
protected:
    ProposalsTest() : warehouse(LocalWarehouse::Content::Empty) {}

    void SetUp() override {
        ASSERT_TRUE(warehouse.start()) << qPrintable(warehouse.why());
        execute("exec kolv_mag_Temp_Tables");
        execute(
            "insert into ##Temp_Prop_Location_BarCode (IDCodeBar,HostName,SPID,UserSign,Aplication,Operation,"
            "BarCode,Quantity,QuantityAdd) values (5,host_name(),-@@SPID,1,N'P',N'I',N'5901',2.5,NULL)");
        execute(
            "insert into ##Temp_Prop_Location "
            "(IDCodeBar,ID,HostName,SPID,UserSign,Aplication,Operation,ItemCode,"
            "ItemName,Rank,Stand,Shelf,Location,Status) values "
            "(5,1,host_name(),-@@SPID,1,N'P',N'I',N'M-1',NULL,1,1,1,1,N'D'),"
            "(5,2,host_name(),-@@SPID,1,N'P',N'I',N'M-1',N'Rura',1,1,1,2,N'C')");
        warehouse.server.clearTrace();
    }
    void execute(const char* statement) { warehouse.context.ConnMain->Execute(QString::fromUtf8(statement)); }

    MapWarehouse warehouse;
    MsgBoxRecorder messages;
    clsProbe service{warehouse.context};
    ProposalLine line{QStringLiteral("before"), {}, {}, 9, 9};
};

TEST_F(ProposalsTest, ReadsTheLineOfAProposal) {
    EXPECT_TRUE(service.LoadParamFormLocationChange(2, 5, line));
    EXPECT_EQ(line.ItemCode, QStringLiteral("M-1"));
    EXPECT_EQ(line.ItemName, QStringLiteral("Rura"));
    EXPECT_EQ(line.BarCode, QStringLiteral("5901"));
    EXPECT_EQ(line.Quantity, 2.5);
    EXPECT_EQ(line.QuantityAdd, 0) << "NULL";
    EXPECT_EQ(
        warehouse.batches(),
        QStringList(QStringLiteral(
            " select A.ItemCode,A.ItemName,B.BarCode,B.Quantity,B.QuantityAdd from ##Temp_Prop_Location "
            "A(nolock)  inner join  ##Temp_Prop_Location_BarCode B(nolock) ON A.IDCodeBar = B.IDCodeBar "
            " where ID = 2 AND A.IDCodeBar = 5")));
    EXPECT_TRUE(service.LoadParamFormLocationChange(1, 5, line));
    EXPECT_EQ(line.ItemName, QString()) << "NULL";
}

TEST_F(ProposalsTest, AProposalThatIsNotThereLeavesTheLine) {
    EXPECT_FALSE(service.LoadParamFormLocationChange(3, 5, line));
    EXPECT_EQ(line.ItemCode, QStringLiteral("before"));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ProposalsTest, TakesAnotherProposalForItsPackage) {
    EXPECT_TRUE(service.ChangeLocationOnAddSur(1, 2, 5));
    EXPECT_EQ(warehouse.calls(QStringLiteral("Kolv_mag_Prop_Location_Change")).first().mid(0, 3).join(u' '),
              QStringLiteral("1 2 5"));
    EXPECT_FALSE(service.ChangeLocationOnAddSur(1, 9, 5)) << "there is no such proposal";
    EXPECT_EQ(messages.count(), 0) << "no message is read";
}

TEST_F(ProposalsTest, FailuresAreReportedUnderTheOwnersName) {
    warehouse.server.kill();
    QString message;
    EXPECT_FALSE(service.LoadParamFormLocationChange(2, 5, line));
    EXPECT_EQ(line.ItemCode, QString()) << "the defaults";
    EXPECT_EQ(line.Quantity, 0);
    EXPECT_FALSE(service.ChangeLocationOnAddSur(1, 2, 5));
    EXPECT_FALSE(service.ConfirmPropozytionLocation(1, QStringLiteral("P"), QStringLiteral("I"), message));
    EXPECT_FALSE(service.ClearBarCodeOnTemp(1, 0, QStringLiteral("P"), QStringLiteral("I")));
    QStringList titles;
    for (const MsgBoxRecorder::Message& box : messages.messages())
        titles.append(box.Title);
    EXPECT_EQ(titles, QStringList({QStringLiteral("Error - clsProbe [LoadParamFormLocationChange]"),
                                   QStringLiteral("Error - clsProbe [ChangeLocationOnAddSur]"),
                                   QStringLiteral("Error - clsProbe [ConfirmPropozytionLocation]"),
                                   QStringLiteral("Error - clsProbe [ClearBarCodeOnTemp]")}));
}

}  // namespace
}  // namespace regalon
