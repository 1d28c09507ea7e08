// The four ways of a document through the demo warehouse, each by the public operations of its service alone.

#include "barcode/BarcodeForm.h"
#include "barcode/Zbar.h"
#include "barcode/clsEan128.h"
#include "barcode/clsEan13.h"
#include "common/DbGateway.h"
#include "platform/Convert.h"
#include "stock/ServiceDesk.h"
#include "stock/clsMagSurImput.h"
#include "stock/clsMagSurImputProd.h"
#include "stock/clsMagSurInputBarCode.h"
#include "stock/clsMagSurOutput.h"

#include <QTemporaryDir>

namespace regalon {
namespace {

using namespace Qt::StringLiterals;

constexpr qint16 kUser = 2;
constexpr qint16 kReceiver = 5;
const QString kP = u"P"_s;
const QString kI = u"I"_s;
const QString kR = u"R"_s;

/// The code of a label of a location: the day of its print says nothing about the place.
QString labelOf(int rank, int stand, int shelf, int location) {
    return u"72607031%1%2%3%4"_s.arg(rank, 2, 10, QLatin1Char('0'))
        .arg(stand, 2, 10, QLatin1Char('0'))
        .arg(shelf)
        .arg(location);
}

class DocumentStories : public test::ServiceDesk {
protected:
    DocumentStories() : ServiceDesk(test::LocalWarehouse::Content::Demo) {}

    double amount(const QString& sql) { return warehouse.value(sql).replace(u',', u'.').toDouble(); }
    /// What lies there of a material, and what came in minus what went out of it plus what came back.
    double stock(const QString& ItemCode) {
        return amount(
            u"select isnull(sum(Quantity),0) from Kolv_Mag_BarCode_Sur where Active = N'Y' and ItemCode = N'%1'"_s
                .arg(ItemCode));
    }
    double booked(const QString& ItemCode) {
        return amount(
            u"select isnull(sum(case H.Operation when N'O' then -H.Quantity when N'I' then H.Quantity when "
            u"N'R' then "
            "H.Quantity else 0 end),0) from Kolv_Mag_BarCode_Sur_History H inner join Kolv_Mag_BarCode_Sur B "
            "on "
            "B.BarCode = H.BarCode where B.ItemCode = N'%1'"_s.arg(ItemCode));
    }
    /// The balance of a material moved by this much since it was weighed last.
    void expectBalance(const QString& ItemCode, double change) {
        EXPECT_DOUBLE_EQ(stock(ItemCode) - m_stock, change);
        EXPECT_DOUBLE_EQ(booked(ItemCode) - m_booked, change);
        EXPECT_DOUBLE_EQ(stock(ItemCode), booked(ItemCode)) << "what lies there is what was booked";
        weigh(ItemCode);
    }
    void weigh(const QString& ItemCode) {
        m_stock = stock(ItemCode);
        m_booked = booked(ItemCode);
    }
    QString placeOf(const QString& BarCode) {
        return warehouse.value(
            u"select isnull(cast(Rank as nvarchar(9)) + N' ' + cast(Stand as nvarchar(9)) + N' ' + "
            u"cast(Shelf as "
            "nvarchar(9)) + N' ' + cast(Location as nvarchar(9)), N'-') + N' ' + Active from "
            "Kolv_Mag_BarCode_Sur where BarCode = N'%1'"_s.arg(BarCode));
    }
    QString labelOfPlace(const QString& BarCode) {
        const QStringList place = placeOf(BarCode).split(u' ');
        if (place.size() != 5)
            return place.join(u' ');
        return labelOf(place[0].toInt(), place[1].toInt(), place[2].toInt(), place[3].toInt());
    }
    /// The letters of a package's bookings, in their order.
    QString history(const QString& BarCode) {
        return warehouse.value(
            u"select string_agg(Operation, N'') within group (order by ID) from Kolv_Mag_BarCode_Sur_History "
            "where BarCode = N'%1'"_s.arg(BarCode));
    }

    /// What a list of proposals shows of a package, as labels of locations.
    struct Proposed {
        QStringList places;  ///< where it may go, best first
        QStringList marked;  ///< which of them the list calls the proposed one
    };

    /// Reads the proposals of a package as a list does.
    template <class Service>
    Proposed proposed(Service& service, const QString& Operation, const QString& BarCode) {
        const QString text =
            u"exec Kolv_mag_Watch_Prop_Location %1,N'P',N'%2',%3,NULL"_s.arg(kUser).arg(Operation);
        EXPECT_TRUE(service.EcexProcedureParam(text.arg(0), message)) << qPrintable(message);
        EXPECT_TRUE(service.EcexProcedure(text.arg(1)));
        const std::shared_ptr<const DbTable> rows = service.rows().table();
        Proposed found;
        for (qsizetype row = 0; row < rows->rowCount; ++row) {
            const auto fromEnd = [&](qsizetype column) {
                return rows->at(row, rows->columns.size() - column);
            };
            const QString status = ToText(fromEnd(3));
            if (ToText(fromEnd(6)) != BarCode || (status != u"D" && status != u"C"))
                continue;
            found.places.append(
                labelOf(ToInt16(fromEnd(10)), ToInt16(fromEnd(9)), ToInt16(fromEnd(8)), ToInt16(fromEnd(7))));
            if (ToText(fromEnd(2)).startsWith(u"Proponowana"))
                found.marked.append(found.places.last());
        }
        return found;
    }

    /// Has places proposed for what is staged, the best of a package being the proposed one.
    template <class Service>
    void propose(Service& service, const QString& Operation, const QStringList& BarCodes) {
        EXPECT_TRUE(service.CheckExistRecordOnAdd(kUser));
        ASSERT_TRUE(service.ConfirmPropozytionLocation(kUser, kP, Operation, message)) << qPrintable(message);
        for (const QString& BarCode : BarCodes) {
            const Proposed found = proposed(service, Operation, BarCode);
            ASSERT_FALSE(found.places.isEmpty()) << qPrintable(BarCode);
            EXPECT_EQ(found.marked, QStringList(found.places.first()));
        }
    }

    /// The user takes the last place of a package instead of the proposed one. Answers its label.
    template <class Service>
    QString takeTheLastPlace(Service& service, const QString& Operation, const OrderPackage& package) {
        const Proposed before = proposed(service, Operation, package.BarCode);
        EXPECT_TRUE(service.EcexProcedure(
            u"select top 1 A.ID,A.IDCodeBar from ##Temp_Prop_Location A(nolock) inner join "
            "##Temp_Prop_Location_BarCode B(nolock) ON A.IDCodeBar = B.IDCodeBar where B.BarCode = N'%1' and "
            "A.Status in (N'D',N'C') order by A.ID desc"_s.arg(package.BarCode)));
        const qint16 id = ToInt16(service.rows().Value("ID"));
        const qint16 idCodeBar = ToInt16(service.rows().Value("IDCodeBar"));
        ProposalLine line;
        EXPECT_TRUE(service.LoadParamFormLocationChange(id, idCodeBar, line));
        EXPECT_EQ(line.ItemCode, package.ItemCode);
        EXPECT_EQ(line.BarCode, package.BarCode);
        EXPECT_EQ(line.Quantity, package.Quantity);
        EXPECT_TRUE(service.ChangeLocationOnAddSur(kUser, id, idCodeBar));
        const Proposed after = proposed(service, Operation, package.BarCode);
        EXPECT_EQ(after.places, before.places);
        EXPECT_EQ(after.marked, QStringList(before.places.last()));
        EXPECT_NE(after.marked, before.marked);
        return before.places.last();
    }

    /// Books what is staged into the buffer and puts every package on the place that its list proposes.
    template <class Service>
    void bookAndPutAway(Service& service, const QString& Operation, qint32 DocEntry, qint16 LineNum,
                        const QStringList& BarCodes) {
        QStringList targets;
        for (const QString& BarCode : BarCodes)
            targets.append(proposed(service, Operation, BarCode).marked.value(0));
        qint16 returned = 99;
        ASSERT_TRUE(service.AddSurOnMag(kUser, kP, Operation, returned, message)) << qPrintable(message);
        EXPECT_EQ(returned, 0);
        for (qsizetype i = 0; i < BarCodes.size(); ++i) {
            EXPECT_EQ(placeOf(BarCodes[i]), u"- Y"_s) << "in the buffer";
            ASSERT_TRUE(service.AddSurOnLocation(DocEntry, LineNum, BarCodes[i], targets[i], kUser, Operation,
                                                 message))
                << qPrintable(message);
            EXPECT_EQ(labelOfPlace(BarCodes[i]), targets[i]);
        }
        EXPECT_TRUE(service.ClearBarCodeOnTemp(kUser, 0, kP, Operation));
        EXPECT_FALSE(service.CheckExistRecordOnAdd(kUser));
    }

    /// Draws codes as labels, those of 13 digits as a supplier prints them, and reads them with a scanner's
    /// eye.
    QStringList scanned(const QStringList& codes) {
        const QTemporaryDir folder;
        QStringList files;
        for (const QString& code : codes) {
            test::BarcodeForm label;
            if (code.size() == 13)
                EXPECT_TRUE(clsEan13().PrintCodeEan13(&label.form, code.left(12), 20, 5, 40, 2, 8));
            else
                EXPECT_TRUE(clsEan128().PrintCodeEan128C(&label.form, code, 20, 5, 40, 2, 8));
            files.append(folder.filePath(code + u".png"_s));
            EXPECT_TRUE(label.image().save(files.last()));
        }
        const QHash<QString, QStringList> found = test::readByZbar(files);
        QStringList read;
        for (const QString& file : files)
            read.append(found.value(file).join(u' ').section(u':', 1));
        return read;
    }

private:
    double m_stock = 0;
    double m_booked = 0;
};

TEST_F(DocumentStories, GoodsInOfAPurchaseOrderWithDrawnBarcodes) {
    const QString item = u"GR-PP-001"_s;
    constexpr qint32 entry = 1113;
    clsMagSurImput service(warehouse.context);
    weigh(item);
    expectBalance(item, 0);

    EXPECT_TRUE(service.ClearBarCodeOnTemp(kUser, 0, kP, kI));
    const qint32 number = service.GetDocNum(entry);
    EXPECT_EQ(number, 240113);
    const QStringList printed{u"2024240113000001"_s, u"5901234123457"_s, u"2024240113000003"_s};
    const QStringList codes = scanned(printed);
    ASSERT_EQ(codes, printed) << "what the scanner reads is what was encoded";
    OrderPackage package{.DocEntry = entry,
                         .DocNum = number,
                         .LineNum = 0,
                         .BarCode = QString(),
                         .Quantity = 300,
                         .UserSign = kUser,
                         .NumberCode = 0,
                         .LineGrd = -1,
                         .DeleteLine = u"N"_s,
                         .ItemCode = item,
                         .Aplication = kP,
                         .Operation = kI};
    for (const QString& code : codes) {
        package.BarCode = code;
        ++package.NumberCode;
        EXPECT_TRUE(service.AddBarCodeOnTemp(package));
    }
    package.DeleteLine = u"Y"_s;
    EXPECT_TRUE(service.AddBarCodeOnTemp(package)) << "the third is taken out again";
    expectBalance(item, 0);

    const QStringList staged = codes.mid(0, 2);
    ASSERT_NO_FATAL_FAILURE(propose(service, kI, staged));
    package.BarCode = codes[0];
    const QString taken = takeTheLastPlace(service, kI, package);
    ASSERT_NO_FATAL_FAILURE(bookAndPutAway(service, kI, entry, 0, staged));
    EXPECT_EQ(labelOfPlace(codes[0]), taken);
    expectBalance(item, 600);
    EXPECT_EQ(history(codes[0]), u"IL"_s);
    EXPECT_EQ(history(codes[1]), u"IL"_s);
    EXPECT_EQ(history(codes[2]), u"NULL"_s) << "never booked";
}

TEST_F(DocumentStories, BarcodesOfAnOrdersLine) {
    const QString item = u"GR-AB-003"_s;
    constexpr qint32 entry = 1113;
    clsMagSurInputBarCode service(warehouse.context);
    weigh(item);
    expectBalance(item, 0);

    const qint32 number = service.GetDocNum(entry);
    const auto year = static_cast<qint16>(service.GetDocYear(entry));
    EXPECT_EQ(number, 240113);
    EXPECT_EQ(year, 2024);
    EXPECT_EQ(service.GetIconLineStatus(entry, 1, kUser, message), 0) << qPrintable(message);
    EXPECT_GE(service.GetStatusItemCode(item), 0);
    PackingData packing;
    ASSERT_TRUE(service.GetParamItemCode(item, packing));
    ASSERT_TRUE(service.SaveItemCodeParam(item, packing.Blength1, packing.Bwidth1, 640, 250.5,
                                          u"worek 10x25"_s, kUser));
    ASSERT_TRUE(service.GetParamItemCode(item, packing));
    EXPECT_EQ(packing.BHeight1, 640);
    EXPECT_EQ(packing.PurPackUn, 250) << "a half comes back as the even number";
    EXPECT_EQ(packing.PurPackMsr, u"worek 10x25"_s);

    EXPECT_EQ(service.GetLastNumberCode(year, number, entry, 1), 0) << "no barcodes yet";
    EXPECT_EQ(service.GetQuantityBarCode(entry, 1), 0);
    for (int i = 1; i <= 2; ++i) {
        const auto next = static_cast<qint16>(service.GetLastNumberCode(year, number, entry, 1) + 1);
        EXPECT_EQ(next, i);
        const QString code = u"20242401130100%1"_s.arg(next, 2, 10, QLatin1Char('0'));
        EXPECT_TRUE(service.SaveBarCode(year, number, entry, 1, next, code, kUser, item));
        EXPECT_FALSE(service.SaveBarCode(year, number, entry, 1, next, code, kUser, item)) << "it is in use";
    }
    EXPECT_EQ(service.GetQuantityBarCode(entry, 1), 501) << "two packages of 250.5";
    EXPECT_EQ(service.GetIconLineStatus(entry, 1, kUser, message), 1) << qPrintable(message);
    EXPECT_EQ(
        warehouse.value(
            u"select string_agg(cast(NumberCode as nvarchar(9)) + N' ' + BarCode + N' ' + cast(YearCode as "
            "nvarchar(9)) + N' ' + cast(DocNum as nvarchar(9)) + N' ' + ItemCode + N' ' + cast(UserSign as "
            "nvarchar(9)), N', ') within group (order by NumberCode) from Kolv_Mag_BarCode_Sur_Code where "
            "DocEntry = 1113 and LineNum = 1"_s),
        u"1 2024240113010001 2024 240113 GR-AB-003 2, 2 2024240113010002 2024 240113 GR-AB-003 2"_s);
    expectBalance(item, 0);
}

/// A package that lies on a location, as the next two stories need one.
struct Lying {
    QString BarCode;
    double Quantity = 0;
    qint32 DocEntry = 0;
    qint16 LineNum = 0;
};

class GiveOutStories : public DocumentStories {
protected:
    const QString item = u"BL-GW-030"_s;
    static constexpr qint32 production = 2103;

    Lying lying() {
        const auto of = [this](const QString& column, const QString& code) {
            return warehouse.value(
                u"select %1 from Kolv_Mag_BarCode_Sur where BarCode = N'%2'"_s.arg(column, code));
        };
        Lying found;
        found.BarCode = warehouse.value(
            u"select min(BarCode) from Kolv_Mag_BarCode_Sur where ItemCode = N'%1' and Active = N'Y' and "
            u"Rank is "
            "not null and Quantity > 10 and DocEntry is not null"_s.arg(item));
        found.Quantity = of(u"Quantity"_s, found.BarCode).replace(u',', u'.').toDouble();
        found.DocEntry = of(u"DocEntry"_s, found.BarCode).toInt();
        found.LineNum = static_cast<qint16>(of(u"LineNum"_s, found.BarCode).toInt());
        return found;
    }

    OrderPackage returning(const Lying& package, qint32 DocNum, double quantity) const {
        return {.DocEntry = package.DocEntry,
                .DocNum = DocNum,
                .LineNum = package.LineNum,
                .BarCode = package.BarCode,
                .Quantity = quantity,
                .UserSign = kUser,
                .NumberCode = 0,
                .LineGrd = -1,
                .DeleteLine = u"N"_s,
                .ItemCode = item,
                .Aplication = kP,
                .Operation = kR};
    }

    /// The whole of a goods-out of one package. Answers the number of its document.
    qint32 giveOut(const Lying& package) {
        clsMagSurOutput service(warehouse.context);
        EXPECT_TRUE(service.ClearBarCodeOnTemp(kUser, 0, kP, u"O"_s));
        EXPECT_TRUE(service.ClearPurchersOrderGiveOut(kUser, kP, 0));
        EXPECT_TRUE(service.ClearItemCodeGiveOut(kUser, kP, 0));
        const qint32 number = service.GetDocNumZlecProd(production);
        EXPECT_GT(number, 0);
        EXPECT_FALSE(service.TestExistsDataTemPurhcaseAndItemCodeGiveOut(kUser));
        EXPECT_TRUE(service.TestItemSurOnMag(item, kP, message)) << qPrintable(message);
        EXPECT_TRUE(service.AddItemCodeTmpGiveOut(kUser, kReceiver, item, u"A"_s, kP, message))
            << qPrintable(message);
        EXPECT_TRUE(
            service.AddPurchaseOrderTmpGiveOut(kUser, kReceiver, package.DocEntry, u"A"_s, kP, message))
            << qPrintable(message);
        QStringList items{QString()};
        QStringList orders{QString()};
        EXPECT_TRUE(service.GetDocItemCodeChecked(kUser, items));
        EXPECT_TRUE(service.GetDocEntryCheckedPurchaseOrders(kUser, orders));
        EXPECT_EQ(items, QStringList(item));
        EXPECT_EQ(orders, QStringList(QString::number(package.DocEntry)));
        EXPECT_TRUE(service.TestExistsDataTemPurhcaseAndItemCodeGiveOut(kUser));

        EXPECT_FALSE(service.TestExistsDataOnTmpOutput(kUser));
        GivenOutPackage out{.DocNum = service.GetDocNum(package.DocEntry),
                            .ItemCode = item,
                            .QuantityProp = package.Quantity,
                            .QuantityOut = package.Quantity,
                            .UserSign = kUser,
                            .LineGrd = -1,
                            .PropOrOut = u"O"_s,
                            .DeleteLine = u"N"_s,
                            .Aplication = kP,
                            .Param = 0,
                            .BarCode = package.BarCode};
        EXPECT_TRUE(service.AddBarCodeOnTemp(out, message)) << qPrintable(message);
        EXPECT_TRUE(service.TestExistsDataOnTmpOutput(kUser));
        qint32 document = 0;
        EXPECT_TRUE(service.GiveOutSurOnMag({.DocNumProd = number,
                                             .DocEntryProd = production,
                                             .LineNumProd = 0,
                                             .UserSign = kUser,
                                             .UserSignGiveOut = kReceiver,
                                             .Aplication = kP},
                                            message, document))
            << qPrintable(message);
        EXPECT_EQ(warehouse.value(
                      u"select cast(DocEntryProd as nvarchar(9)) + N' ' + cast(DocNumProd as nvarchar(9)) + "
                      "N' ' + cast(LineNumProd as nvarchar(9)) + N' ' + cast(UserSign as nvarchar(9)) + N' ' "
                      "+ cast(UserSignGiveOut as nvarchar(9)) from Kolv_Mag_GiveOut where GiveOutDocNum = "
                      "%1"_s.arg(document)),
                  u"%1 %2 0 %3 %4"_s.arg(production).arg(number).arg(kUser).arg(kReceiver));
        QStringList lines{QString()};
        QStringList codes{QString()};
        EXPECT_TRUE(service.GetDataGivOutListPrint(document, lines, codes));
        EXPECT_EQ(lines, QStringList(u"1"_s));
        EXPECT_EQ(codes, QStringList(package.BarCode));
        EXPECT_TRUE(service.ClearBarCodeOnTemp(kUser, 0, kP, u"O"_s));
        EXPECT_TRUE(service.ClearPurchersOrderGiveOut(kUser, kP, 0));
        EXPECT_TRUE(service.ClearItemCodeGiveOut(kUser, kP, 0));
        EXPECT_FALSE(service.TestExistsDataTemPurhcaseAndItemCodeGiveOut(kUser));
        EXPECT_FALSE(service.TestExistsDataOnTmpOutput(kUser));
        return document;
    }
};

TEST_F(GiveOutStories, GoodsOutToAManufacturingOrderWithItsPrintedList) {
    const Lying package = lying();
    ASSERT_GT(package.Quantity, 10);
    weigh(item);
    expectBalance(item, 0);
    const double before = amount(u"select max(GiveOutDocNum) from Kolv_Mag_GiveOut"_s);
    EXPECT_EQ(giveOut(package), before + 1) << "numbers without gaps";
    expectBalance(item, -package.Quantity);
    EXPECT_TRUE(placeOf(package.BarCode).endsWith(u" N")) << "inactive";
    EXPECT_TRUE(history(package.BarCode).endsWith(u'O')) << qPrintable(history(package.BarCode));
}

TEST_F(GiveOutStories, AReturnFromManufacturingWithASmallerQuantity) {
    const Lying package = lying();
    const qint32 document = giveOut(package);
    weigh(item);
    expectBalance(item, 0);

    clsMagSurImputProd service(warehouse.context);
    EXPECT_TRUE(service.ClearBarCodeOnTemp(kUser, 0, kP, kR));
    ReturnedPackage returned{.GiveOutDocNum = document,
                             .GiveOutLineNum = 1,
                             .BarCode = package.BarCode,
                             .ItemCode = item,
                             .Quantity = package.Quantity + 1,
                             .Aplication = kP,
                             .Operation = kR};
    double confirmed = 0;
    EXPECT_FALSE(service.ConfirmQuantityBarCodeComBackProcuction(returned, message, confirmed));
    EXPECT_NE(message, QString());
    EXPECT_EQ(confirmed, package.Quantity) << "what may come back at most";
    returned.Quantity = package.Quantity / 2;
    EXPECT_TRUE(service.ConfirmQuantityBarCodeComBackProcuction(returned, message, confirmed))
        << qPrintable(message);
    EXPECT_EQ(confirmed, package.Quantity / 2);
    EXPECT_FALSE(service.CheckExistRecordOnAdd(kUser));
    EXPECT_TRUE(service.AddBarCodeOnTempInputProd(
        returning(package, service.GetDocNum(package.DocEntry), confirmed)));
    EXPECT_EQ(warehouse.value(u"select BarCode from Kolv_Mag_BarCode_Input_Sur_tym where Operation = N'R'"_s),
              package.BarCode);
    ASSERT_NO_FATAL_FAILURE(propose(service, kR, {package.BarCode}));
    ASSERT_NO_FATAL_FAILURE(
        bookAndPutAway(service, kR, package.DocEntry, package.LineNum, {package.BarCode}));
    expectBalance(item, confirmed);
    EXPECT_DOUBLE_EQ(amount(u"select QuantityBack from Kolv_Mag_BarCode_Sur_Production where GiveOutDocNum = "
                            "%1 and GiveOutLineNum = 1"_s.arg(document)),
                     confirmed);
    EXPECT_TRUE(history(package.BarCode).endsWith(u"ORL")) << qPrintable(history(package.BarCode));
    EXPECT_FALSE(service.ConfirmQuantityBarCodeComBackProcuction(returned, message, confirmed))
        << "a line comes back once";
}

TEST_F(GiveOutStories, AStagedReturnLiesWhereAGoodsInDoesAndIsSeenAsOne) {
    const Lying package = lying();
    giveOut(package);
    clsMagSurImputProd service(warehouse.context);
    const qint32 number = service.GetDocNum(package.DocEntry);
    EXPECT_FALSE(service.CheckExistRecordOnAdd(kUser));
    EXPECT_TRUE(service.AddBarCodeOnTempInputProd(returning(package, number, 1)));
    EXPECT_EQ(warehouse.value(u"select count(*) from Kolv_Mag_BarCode_Input_Sur_tym"_s), u"1"_s);
    EXPECT_TRUE(service.CheckExistRecordOnAdd(kUser));
}

TEST_F(DocumentStories, ALineWithoutBarcodesHasANumberFromWhichTheNextFollows) {
    clsMagSurInputBarCode service(warehouse.context);
    const qint32 last = service.GetLastNumberCode(2024, 240113, 1113, 2);
    ASSERT_GE(last, 0);
    const auto next = static_cast<qint16>(last + 1);
    EXPECT_TRUE(
        service.SaveBarCode(2024, 240113, 1113, 2, next, u"2024240113020001"_s, kUser, u"BA-MB-010"_s));
    EXPECT_EQ(service.GetLastNumberCode(2024, 240113, 1113, 2), next);
}

TEST_F(DocumentStories, AFractionOfAPurchasePackageComesBackWhole) {
    clsMagSurInputBarCode service(warehouse.context);
    for (const auto& [saved, read] : {std::pair{2.5, 2}, {3.5, 4}}) {
        EXPECT_TRUE(service.SaveItemCodeParam(u"FA-PR-701"_s, 1, 2, 3, saved, u"worek"_s, kUser));
        PackingData packing;
        EXPECT_TRUE(service.GetParamItemCode(u"FA-PR-701"_s, packing));
        EXPECT_EQ(packing.PurPackUn, read) << saved;
    }
}

TEST_F(DocumentStories, UnknownDocumentsAndMaterialsAreRefusedWithAReason) {
    clsMagSurImput in(warehouse.context);
    EXPECT_EQ(in.GetDocNum(999999), 0);
    EXPECT_FALSE(in.AddBarCodeOnTemp({.DocEntry = 999999,
                                      .DocNum = 1,
                                      .LineNum = 0,
                                      .BarCode = u"1"_s,
                                      .Quantity = 1,
                                      .UserSign = kUser,
                                      .NumberCode = 0,
                                      .LineGrd = -1,
                                      .DeleteLine = u"N"_s,
                                      .ItemCode = u"?"_s,
                                      .Aplication = kP,
                                      .Operation = kI}));
    clsMagSurInputBarCode codes(warehouse.context);
    EXPECT_EQ(codes.GetDocYear(999999), 0);
    EXPECT_EQ(codes.GetIconLineStatus(999999, 0, kUser, message), -1);
    EXPECT_EQ(codes.GetLastNumberCode(2024, 1, 999999, 0), -1);
    EXPECT_FALSE(codes.SaveBarCode(2024, 1, 999999, 0, 1, u"1"_s, kUser, u"?"_s));
    EXPECT_FALSE(codes.SaveItemCodeParam(u"?"_s, 1, 1, 1, 1, u"x"_s, kUser));
    EXPECT_EQ(codes.GetStatusItemCode(u"?"_s), -1);
    EXPECT_EQ(codes.GetQuantityBarCode(999999, 0), 0);
    clsMagSurOutput out(warehouse.context);
    message.clear();
    EXPECT_FALSE(out.TestItemSurOnMag(u"?"_s, kP, message));
    EXPECT_NE(message, QString());
    qint32 number = 0;
    message.clear();
    EXPECT_FALSE(out.GiveOutSurOnMag({.DocNumProd = 1,
                                      .DocEntryProd = 999999,
                                      .LineNumProd = 0,
                                      .UserSign = kUser,
                                      .UserSignGiveOut = kReceiver,
                                      .Aplication = kP},
                                     message, number));
    EXPECT_EQ(number, -1);
    EXPECT_NE(message, QString());
}

TEST_F(DocumentStories, OfTwoUsersWhoStageTheSamePackageOneBooksIt) {
    AppContext second;
    second.ConnMain = std::make_unique<DbConnection>();
    second.ConnMain->Open(warehouse.server.connectionString());
    second.ErrorService = std::make_unique<clsError>();
    clsMagSurImput first(warehouse.context);
    clsMagSurImput other(second);
    OrderPackage package{.DocEntry = 1113,
                         .DocNum = 240113,
                         .LineNum = 0,
                         .BarCode = u"5901234"_s,
                         .Quantity = 300,
                         .UserSign = kUser,
                         .NumberCode = 0,
                         .LineGrd = -1,
                         .DeleteLine = u"N"_s,
                         .ItemCode = u"GR-PP-001"_s,
                         .Aplication = kP,
                         .Operation = kI};
    weigh(package.ItemCode);
    EXPECT_TRUE(first.AddBarCodeOnTemp(package));
    EXPECT_FALSE(other.CheckExistRecordOnAdd(3)) << "each sees only its own rows";
    package.UserSign = 3;
    EXPECT_TRUE(other.AddBarCodeOnTemp(package)) << "-1 warns and is a success";
    EXPECT_TRUE(other.CheckExistRecordOnAdd(3));
    qint16 returned = 99;
    EXPECT_TRUE(first.AddSurOnMag(kUser, kP, kI, returned, message)) << qPrintable(message);
    message.clear();
    EXPECT_FALSE(other.AddSurOnMag(3, kP, kI, returned, message));
    EXPECT_GT(returned, 0);
    EXPECT_NE(message, QString());
    expectBalance(package.ItemCode, 300);
}

}  // namespace
}  // namespace regalon
