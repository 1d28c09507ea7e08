#pragma once

#include "stock/ServiceDesk.h"

namespace regalon::test::contracts {

using namespace Qt::StringLiterals;

inline const Contract ClearTemp{u"Kolv_mag_BarCode_Clear_Temp"_s,
                                {u"@UserSign smallint"_s, u"@Param smallint"_s, u"@Aplication nvarchar(10)"_s,
                                 u"@Operation nvarchar(10)"_s},
                                {}};

inline const Contract Confirm{
    u"Kolv_mag_Watch_Prop_Location_Confirm"_s,
    {u"@UserSign smallint"_s, u"@Aplication nvarchar(10)"_s, u"@Operation nvarchar(10)"_s}};

inline const Contract ConfirmOfUser{u"Kolv_mag_Watch_Prop_Location_Confirm"_s, {u"@UserSign smallint"_s}};

inline const Contract PropChange{u"Kolv_mag_Prop_Location_Change"_s,
                                 {u"@UserSign smallint"_s, u"@ID smallint"_s, u"@IDCodeBar smallint"_s}};

inline const Contract ToBuffer{
    u"Kolv_mag_Add_Sur_On_Bufor"_s,
    {u"@UserSign smallint"_s, u"@Aplication nvarchar(10)"_s, u"@Operation nvarchar(10)"_s}};

inline const Contract ToLocation{
    u"Kolv_mag_Add_Sur_On_Location"_s,
    {u"@DocEntry int"_s, u"@LineNum smallint"_s, u"@BarCodeSur nvarchar(50)"_s, u"@BarCodeLoc nvarchar(50)"_s,
     u"@UserSign smallint"_s, u"@Operation nvarchar(10)"_s}};

/// Goods-in and return stage a package by two procedures of one shape.
inline Contract stagePackage(const QString& procedure) {
    return {procedure,
            {u"@DocEntry int"_s, u"@DocNum int"_s, u"@LineNum smallint"_s, u"@BarCode nvarchar(50)"_s,
             u"@NumberCode smallint"_s, u"@Quantity decimal(19,6)"_s, u"@UserSign smallint"_s,
             u"@LineGrd smallint"_s, u"@DeleteLine nvarchar(1)"_s, u"@ItemCode nvarchar(20)"_s,
             u"@Aplication nvarchar(10)"_s, u"@Operation nvarchar(10)"_s}};
}
inline const Contract AddTemp = stagePackage(u"Kolv_mag_BarCode_Add_Temp"_s);
inline const Contract AddTempReturned = stagePackage(u"Kolv_mag_BarCode_Input_Kolv_Temp"_s);

inline const Contract AddTempOut{
    u"Kolv_mag_BarCode_Add_Temp_Out"_s,
    {u"@DocNum int"_s, u"@ItemCode nvarchar(20)"_s, u"@QuantityProp decimal(19,6)"_s,
     u"@QuantityOut decimal(19,6)"_s, u"@UserSign smallint"_s, u"@LineGrd smallint"_s,
     u"@PropOrOut nvarchar(10)"_s, u"@DeleteLine nvarchar(1)"_s, u"@Aplication nvarchar(10)"_s,
     u"@Param smallint"_s, u"@BarCode nvarchar(50)"_s}};

inline const Contract GiveOutStaged{
    u"Kolv_mag_GiveOut_Sur_On_Location"_s,
    {u"@DocNumProd int"_s, u"@DocEntryProd int"_s, u"@LineNumProd smallint"_s, u"@UserSign smallint"_s,
     u"@UserSignGiveOut smallint"_s, u"@Aplication nvarchar(10)"_s},
    {u"@GiveOutDocNum int"_s, u"@ErrDesc nvarchar(250)"_s}};

inline const Contract ConfirmItem{u"Kolv_mag_Confirm_Item_GiveOut"_s,
                                  {u"@ItemCode nvarchar(20)"_s, u"@Aplication nvarchar(10)"_s}};

inline const Contract TickOrder{
    u"Kolv_mag_Add_PurchesOrders_GiveOut"_s,
    {u"@Aplication nvarchar(10)"_s, u"@UserSign smallint"_s, u"@UserSignGiveOut smallint"_s,
     u"@DocEntry int"_s, u"@AddOrDelete nvarchar(1)"_s}};

inline const Contract TickItem{
    u"Kolv_mag_Add_ItemCode_GiveOut"_s,
    {u"@Aplication nvarchar(10)"_s, u"@UserSign smallint"_s, u"@UserSignGiveOut smallint"_s,
     u"@ItemCode nvarchar(20)"_s, u"@AddOrDelete nvarchar(1)"_s}};

inline const Contract ClearOrders{
    u"Kolv_mag_Clear_PurchesOrders_GiveOut"_s,
    {u"@Aplication nvarchar(10)"_s, u"@UserSign smallint"_s, u"@Param smallint"_s},
    {}};

inline const Contract ClearItems{
    u"Kolv_mag_Clear_ItemCode_GiveOut"_s,
    {u"@Aplication nvarchar(10)"_s, u"@UserSign smallint"_s, u"@Param smallint"_s},
    {}};

inline const Contract LineStatus{u"kolv_mag_Line_Status_PurchaseOrder"_s,
                                 {u"@DocEntry int"_s, u"@Linenum smallint"_s, u"@UserSign smallint"_s}};

inline const Contract LastNumber{
    u"Kolv_mag_GetLastBarCode_Sur"_s,
    {u"@Year smallint"_s, u"@DocEntry int"_s, u"@DocNum int"_s, u"@LineNum smallint"_s},
    {}};

inline const Contract SaveCode{u"Kolv_mag_SaveBarCode_Sur"_s,
                               {u"@Year smallint"_s, u"@DocEntry int"_s, u"@DocNum int"_s,
                                u"@LineNum smallint"_s, u"@NumberCode smallint"_s, u"@BarCode nvarchar(50)"_s,
                                u"@UserSign smallint"_s, u"@ItemCode nvarchar(20)"_s}};

inline const Contract SavePacking{
    u"Kolv_mag_SaveItemCodeParam_Sur"_s,
    {u"@ItemCode nvarchar(20)"_s, u"@SLength1 decimal(19,6)"_s, u"@SWidth1 decimal(19,6)"_s,
     u"@BHeight1 decimal(19,6)"_s, u"@PurPackUn decimal(19,6)"_s, u"@PurPackMsr nvarchar(100)"_s,
     u"@UserSign smallint"_s}};

inline const Contract ConfirmReturned{
    u"kolv_mag_Confirm_Quantity_Input_Prod"_s,
    {u"@GiveOutDocNum int"_s, u"@GiveOutLineNum smallint"_s, u"@BarCode nvarchar(50)"_s,
     u"@ItemCode nvarchar(20)"_s, u"@Quantity decimal(19,6)"_s, u"@Aplication nvarchar(10)"_s,
     u"@Operation nvarchar(10)"_s},
    {u"@ErrDesc nvarchar(250)"_s, u"@ConfirmedQuantity decimal(19,6)"_s}};

}  // namespace regalon::test::contracts
