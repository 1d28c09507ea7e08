#include "app/StockCall.h"
#include "common/DbGateway.h"
#include "platform/Convert.h"

#include <QLabel>
#include <QLineEdit>
#include <QWidget>

namespace regalon {

namespace {

constexpr const char* kPackage =
    "DocEntry DocNum LineNum BarCode Quantity UserSign NumberCode LineGrd DeleteLine ItemCode Aplication "
    "Operation";
constexpr const char* kToBuffer = "UserSign Aplication Operation ReturnValue Message";
constexpr const char* kToLocation = "DocEntry LineNum BarCodeSur BarCodeLoc UserSign Operation Message";
constexpr const char* kProposal = "ID IDCodeBar ItemCode ItemName BarCode Quantity QuantityAdd";
constexpr const char* kConfirm = "UserSign Aplication Operation Message";
constexpr const char* kClear = "UserSign Param Aplication Operation";

QString cell(const QVariant& value) {
    if (!value.isValid())
        return QStringLiteral("NULL");
    if (value.typeId() == QMetaType::QByteArray)
        return QStringLiteral("0x") + QString::fromLatin1(value.toByteArray().toHex());
    return value.typeId() == QMetaType::Double ? SqlNumber(value) : ToText(value);
}

template <class Service>
bool runText(Service& service, const QString& sql, TextRows& rows) {
    const bool done = service.EcexProcedure(sql);
    const std::shared_ptr<const DbTable> table = service.rows().table();
    if (!table)
        return done;
    QStringList names;
    for (const DbColumn& column : table->columns)
        names.append(column.name);
    rows.lines.append(names);
    for (qsizetype row = 0; row < table->rowCount; ++row) {
        QStringList cells;
        for (qsizetype column = 0; column < table->columns.size(); ++column)
            cells.append(cell(table->at(row, column)));
        rows.lines.append(cells);
    }
    return done;
}

/// What a form would show.
void showPrintRaport(clsMagSurInputBarCode& service, const QString& sql, QString& raportName,
                     QString& raportFile, QString& raportCode) {
    QWidget form;
    QLabel name(&form);
    name.setObjectName(QStringLiteral("lblRaportName"));
    QLineEdit file(&form);
    file.setObjectName(QStringLiteral("txtRaportFile"));
    QLineEdit code(&form);
    code.setObjectName(QStringLiteral("txtRaportCode"));
    service.SetPrintRaportParam(&form, sql);
    raportName = name.text();
    raportFile = file.text();
    raportCode = code.text();
}

/// The operations of one class.
template <class Service>
class Table {
public:
    Table(QList<StockOperation>& all, const char* className, Service StockServices::*service)
        : m_all(all), m_prefix(QString::fromLatin1(className) + u'.'), m_service(service) {}

    template <class Method>
    void add(const char* name, Method method, const char* names) {
        if constexpr (std::is_member_function_pointer_v<Method>)
            m_all.append(StockCall::method(m_prefix + QString::fromLatin1(name), m_service, method, names));
        else
            m_all.append(StockCall::function(m_prefix + QString::fromLatin1(name), m_service, method, names));
    }
    void addRunText() { add("EcexProcedure", &runText<Service>, "strSQL Rows"); }

private:
    QList<StockOperation>& m_all;
    QString m_prefix;
    Service StockServices::*m_service;
};

void addImput(QList<StockOperation>& all) {
    using Service = clsMagSurImput;
    Table table(all, "clsMagSurImput", &StockServices::Imput);
    table.addRunText();
    table.add("EcexProcedureParam", &Service::EcexProcedureParam, "strSQL Message");
    table.add("AddBarCodeOnTemp", &Service::AddBarCodeOnTemp, kPackage);
    table.add("GetDocNum", &Service::GetDocNum, "DocEntry");
    table.add("ClearBarCodeOnTemp", &Service::ClearBarCodeOnTemp, kClear);
    table.add("LoadParamFormLocationChange", &Service::LoadParamFormLocationChange, kProposal);
    table.add("ChangeLocationOnAddSur", &Service::ChangeLocationOnAddSur, "UserSign ID IDCodeBar");
    table.add("AddSurOnMag", &Service::AddSurOnMag, kToBuffer);
    table.add("AddSurOnLocation", &Service::AddSurOnLocation, kToLocation);
    table.add("ConfirmPropozytionLocation", &Service::ConfirmPropozytionLocation, kConfirm);
    table.add("CheckExistRecordOnAdd", &Service::CheckExistRecordOnAdd, "UserSign");
}

void addInputBarCode(QList<StockOperation>& all) {
    using Service = clsMagSurInputBarCode;
    Table table(all, "clsMagSurInputBarCode", &StockServices::InputBarCode);
    table.addRunText();
    table.add("GetIconLineStatus", &Service::GetIconLineStatus, "DocEntry LineNum UserSign Message");
    table.add("SetPrintRaportParam", &showPrintRaport, "Sql lblRaportName txtRaportFile txtRaportCode");
    table.add("GetDocNum", &Service::GetDocNum, "DocEntry");
    table.add("GetDocYear", &Service::GetDocYear, "DocEntry");
    table.add("GetLastNumberCode", &Service::GetLastNumberCode, "Year DocNum DocEntry LineNum");
    table.add("SaveBarCode", &Service::SaveBarCode,
              "Year DocNum DocEntry LineNum NumberCode BarCode UserSign ItemCode");
    table.add("GetParamItemCode", &Service::GetParamItemCode,
              "ItemCode Blength1 Bwidth1 BHeight1 PurPackUn PurPackMsr");
    table.add("SaveItemCodeParam", &Service::SaveItemCodeParam,
              "ItemCode SLength1 SWidth1 BHeight1 PurPackUn PurPackMsr UserSign");
    table.add("GetStatusItemCode", &Service::GetStatusItemCode, "ItemCode");
    table.add("GetQuantityBarCode", &Service::GetQuantityBarCode, "first second");
}

void addOutput(QList<StockOperation>& all) {
    using Service = clsMagSurOutput;
    Table table(all, "clsMagSurOutput", &StockServices::Output);
    table.addRunText();
    table.add("GetDocNum", &Service::GetDocNum, "DocEntry");
    table.add("GetDocNumZlecProd", &Service::GetDocNumZlecProd, "DocEntry");
    table.add("LoadParamFormLocationChange", &Service::LoadParamFormLocationChange, kProposal);
    table.add("ChangeLocationOnAddSur", &Service::ChangeLocationOnAddSur, "UserSign ID IDCodeBar");
    table.add("AddSurOnMag", &Service::AddSurOnMag, kToBuffer);
    table.add("AddSurOnLocation", &Service::AddSurOnLocation, kToLocation);
    table.add("ConfirmPropozytionLocation", &Service::ConfirmPropozytionLocation, "UserSign Message");
    table.add("CheckExistRecordOnAdd", &Service::CheckExistRecordOnAdd, "UserSign");
    table.add(
        "AddBarCodeOnTemp", &Service::AddBarCodeOnTemp,
        "DocNum ItemCode QuantityProp QuantityOut UserSign LineGrd PropOrOut DeleteLine Aplication Param "
        "BarCode Message");
    table.add("ClearBarCodeOnTemp", &Service::ClearBarCodeOnTemp, kClear);
    table.add(
        "GiveOutSurOnMag", &Service::GiveOutSurOnMag,
        "DocNumProd DocEntryProd LineNumProd UserSign UserSignGiveOut Aplication Message GiveOutDocNum");
    table.add("TestExistsDataOnTmpOutput", &Service::TestExistsDataOnTmpOutput, "UserSign");
    table.add("TestExistsDataTemPurhcaseAndItemCodeGiveOut",
              &Service::TestExistsDataTemPurhcaseAndItemCodeGiveOut, "UserSign");
    table.add("TestItemSurOnMag", &Service::TestItemSurOnMag, "ItemCode Aplication Message");
    table.add("GetDataGivOutListPrint", &Service::GetDataGivOutListPrint, "DocNum LineNums BarCodes");
    table.add("AddPurchaseOrderTmpGiveOut", &Service::AddPurchaseOrderTmpGiveOut,
              "UserSign UserSignGiveOut DocEntry AddOrDelete Aplication Message");
    table.add("AddItemCodeTmpGiveOut", &Service::AddItemCodeTmpGiveOut,
              "UserSign UserSignGiveOut ItemCode AddOrDelete Aplication Message");
    table.add("GetDocEntryCheckedPurchaseOrders", &Service::GetDocEntryCheckedPurchaseOrders,
              "UserSign DocEntries");
    table.add("GetDocItemCodeChecked", &Service::GetDocItemCodeChecked, "UserSign ItemCodes");
    table.add("ClearPurchersOrderGiveOut", &Service::ClearPurchersOrderGiveOut, "UserSign Aplication Param");
    table.add("ClearItemCodeGiveOut", &Service::ClearItemCodeGiveOut, "UserSign Aplication Param");
}

void addImputProd(QList<StockOperation>& all) {
    using Service = clsMagSurImputProd;
    Table table(all, "clsMagSurImputProd", &StockServices::ImputProd);
    table.addRunText();
    table.add("AddBarCodeOnTempInputProd", &Service::AddBarCodeOnTempInputProd, kPackage);
    table.add("ConfirmQuantityBarCodeComBackProcuction", &Service::ConfirmQuantityBarCodeComBackProcuction,
              "GiveOutDocNum GiveOutLineNum BarCode ItemCode Quantity Aplication Operation Message "
              "ConfirmedQuantity");
    table.add("GetDocNum", &Service::GetDocNum, "DocEntry");
    table.add("ClearBarCodeOnTemp", &Service::ClearBarCodeOnTemp, kClear);
    table.add("LoadParamFormLocationChange", &Service::LoadParamFormLocationChange, kProposal);
    table.add("ChangeLocationOnAddSur", &Service::ChangeLocationOnAddSur, "UserSign ID IDCodeBar");
    table.add("AddSurOnMag", &Service::AddSurOnMag, kToBuffer);
    table.add("AddSurOnLocation", &Service::AddSurOnLocation, kToLocation);
    table.add("ConfirmPropozytionLocation", &Service::ConfirmPropozytionLocation, kConfirm);
    table.add("CheckExistRecordOnAdd", &Service::CheckExistRecordOnAdd, "UserSign");
    table.add("EcexProcedureParam", &Service::EcexProcedureParam, "strSQL Message");
}

QList<StockOperation> makeOperations() {
    QList<StockOperation> all;
    addImput(all);
    addInputBarCode(all);
    addOutput(all);
    addImputProd(all);
    Table(all, "clsMagSurContent", &StockServices::Content).addRunText();
    return all;
}

}  // namespace

const QList<StockOperation>& stockOperations() {
    static const QList<StockOperation> all = makeOperations();
    return all;
}

}  // namespace regalon
