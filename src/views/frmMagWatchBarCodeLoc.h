#pragma once

#include "map/MapWatchWindow.h"
#include "platform/ImageList.h"
#include "views/BarCodeHighlight.h"
#include "views/clsMagWatchBarCodeLoc.h"

#include <QList>
#include <QString>

#include <functional>
#include <memory>
#include <utility>

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;

namespace regalon {

class ListItem;
class ListView;
class PictureBox;
class ToolBar;

/// Answers which barcoded packages lie on a location, and where the package of a barcode lies. It shows the
/// plan, the content of a location over it, the search for a material or the lookup of a code, one at a time.
class frmMagWatchBarCodeLoc : public MapWatchWindow {
    Q_OBJECT

public:
    /// The context must outlive the window. Without a detail a click on a stand ends in the standard handler.
    explicit frmMagWatchBarCodeLoc(AppContext& context, const StandDetail& standDetail = {},
                                   QWidget* parent = nullptr);
    ~frmMagWatchBarCodeLoc() override;

    /// Shows the active template of a statement on a form: the service of barcodes can, which this room does
    /// not know.
    using PrintRaportParam = std::function<void(const QWidget* Form, const QString& Sql)>;
    void setPrintRaportParam(PrintRaportParam show) { m_printRaportParam = std::move(show); }

    /// Shows the user's active template. Nothing calls it: it stands ready for the button of the templates.
    void SetPrintRaport();

protected:
    // Event routines.
    void Form_Load() override;
    void Form_Unload() override;
    void imgBookStand_Click(int index) override;
    void imglocation_Click(int index) override;

    void RebulidMag() override;

private:
    // Design (frmMagWatchBarCodeLoc_Design.cpp)
    void createToolbar();
    void createStatusPanel();
    void createContent();
    void createDescription();
    void createFilter();
    void createList();
    void createLookup();
    void createLookupResult();
    void createLabelStrip();
    QLabel* addPair(QWidget* frame, const char* name, const QString& caption, const char* dataName, int left,
                    int top, int captionWidth, int dataWidth);
    QLabel* addResult(const char* name, const QString& caption, const char* dataName, int left, int top,
                      int captionWidth, int dataWidth);

    // The window (frmMagWatchBarCodeLoc.cpp)
    void tlbCmd_ButtonClick(const QString& key);
    void resetDesign();
    void hidePanels();
    void showMap();
    void closeContent();

    // The content of a location (frmMagWatchBarCodeLoc_Content.cpp)
    void tlbAkceptLocation_ButtonClick(const QString& key);
    void AkceptLocation();
    void showFigures(const BarCodeFigures& figures);
    void FillBarCodeLocation(const LocationAddress& address);
    void chkActiveBarCode_Click();
    void lstBarCodeLocation_Click(const ListItem& item);
    void lstBarCodeLocation_ItemCheck(ListItem& item);

    // The lookup of a code (frmMagWatchBarCodeLoc_Lookup.cpp)
    void tlbLookForBarCode_ButtonClick(const QString& key);
    void tlbLookForSurBarCode_ButtonClick(const QString& key);
    void openLookup();
    void LookForBarCode();
    void showPlace(const BarCodePlace& place);
    void showResult(bool found);
    void LookForBarCodeLocation();
    void ChangeIconOnLocationOnInputItemCOdeAnyLocation(const PackagePlaces& places);

    // The labels (frmMagWatchBarCodeLoc_Labels.cpp)
    void PrintBarCodeLocation(bool fromLookup);
    void tlbPodlad_ButtonClick(const QString& key);
    void tlbPrintBarCodeAllLocation_ButtonClick(const QString& key);
    void tvblRodzajeEtykiet_ButtonClick(const QString& key);

    PrintRaportParam m_printRaportParam;
    std::unique_ptr<clsMagWatchBarCodeLoc> m_data;  ///< lives from load to load
    QString m_aplication;
    QString m_operation;  ///< part of the window's state by its design; nothing reads it

    // Controls, owned by their parents.
    ToolBar* m_tlbAkceptLocation = nullptr;
    QGroupBox* m_frmWathLocationShift = nullptr;
    QLabel* m_lblRankData = nullptr;
    QLabel* m_lblStandData = nullptr;
    QLabel* m_lblShelfData = nullptr;
    QLabel* m_lblLocationData = nullptr;
    QLabel* m_lblQuantityData = nullptr;
    QLabel* m_lblQuantityPercentData = nullptr;
    QLabel* m_lblBarCodeActiveData = nullptr;
    QLabel* m_lblBarCodeGlobalData = nullptr;
    QLabel* m_lblItemCodeData = nullptr;
    QCheckBox* m_chkActiveBarCode = nullptr;
    QLineEdit* m_txtBarCodeOnUse = nullptr;
    ListView* m_lstBarCodeLocation = nullptr;

    QGroupBox* m_frmLookForSurBarCode = nullptr;
    QLineEdit* m_txtBarCodeLookFor = nullptr;
    QLineEdit* m_txtNumberCode = nullptr;
    ToolBar* m_tlbLookForBarCode = nullptr;
    QLabel* m_lblItemCodeLookForBarCodeData = nullptr;
    QLabel* m_lblRankLokFOrBarCodeData = nullptr;
    QLabel* m_lblStandLokFOrBarCodeData = nullptr;
    QLabel* m_lblShelfLokFOrBarCodeData = nullptr;
    QLabel* m_lblLocationLokFOrBarCodeData = nullptr;
    QList<QLabel*> m_result;  ///< the ten labels of the lookup, which come and go together

    QGroupBox* m_frmPodglad = nullptr;
    QLabel* m_lblRaportName = nullptr;
    QLineEdit* m_txtRaportCode = nullptr;
    QLineEdit* m_txtRaportFile = nullptr;
    QWidget* m_oleWatchTemplete = nullptr;
    PictureBox* m_picBarCode = nullptr;

    ImageList m_imgSmall;
};

}  // namespace regalon
