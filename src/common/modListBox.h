#pragma once

#include <QString>

namespace regalon {

struct AppContext;
class DbRecordset;
class ListView;
class DataCombo;

/// The pieces of a result column's name: caption ":" width ";" alignment.
struct ColumnName {
    static bool isHidden(const QString& name);    ///< holds "xxx_", case-sensitive, anywhere
    static QString caption(const QString& name);  ///< what stands before the first ":"
};

/// Fills a list view from a SQL text whose column names steer the display. Reports its own failures.
///
/// strSort: caption of the column to sort by, or "". blnHeaders: make the headers by the hidden-column rule
/// when the list has none. blnNoDefaultSort: with strSort empty, false sorts by the first column, true not at
/// all. blnSetWidth: apply SetWidthColumnOnGrid. blnLp: add the row-number column "Lp" (it counts down),
/// intLpWidth twips wide, 0 meaning 600.
void FilleListView(AppContext& context, ListView& lvw, const QString& strSQL, const QString& strSort,
                   bool blnHeaders, bool blnNoDefaultSort, bool blnSetWidth, bool blnLp, qint16 intLpWidth);

/// Sets widths (twips) and alignments from the column names of an open recordset. Reports its own failures.
void SetWidthColumnOnGrid(AppContext& context, ListView& lvw, const DbRecordset& rs, bool blnLp,
                          qint16 intLpWidth);

/// Sorts by the column whose caption is named, and flips its mark "[^]" or "[v]". Reports its own failures.
void Sorted(AppContext& context, ListView& lvw, const QString& strColumn, bool blnSkip);

/// Fills a data combo: first column the key, second the display text. blnNoFirst leaves it without selection.
/// Reports its own failures.
void FillComboBox(AppContext& context, DataCombo& cmb, const QString& strSQL, bool blnNoFirst);

/// Runs a text for its effect. True also after a failure, which it reports itself.
bool EcexProcedure(AppContext& context, const QString& strSQL);

}  // namespace regalon
