#pragma once

#include "map/LayoutEditor.h"

#include <QByteArray>
#include <QTimer>

namespace regalon::test {

// As the view of parameters calls them.
inline const QString kHeight = QStringLiteral("Wysokość [mm]");
inline const QString kStatus = QStringLiteral("Status lokalizacji");
inline const QString kPicture = QStringLiteral("Zdjęcie");
inline const QString kDescription = QStringLiteral("Opis");

/// The caption of the save button, until it has saved and again after that.
inline const QString kReadyToSave = QStringLiteral("&Zapisz parametr");

/// A picture of 40 by 20 pixels in a file's bytes.
QByteArray picture(const char* format);

/// The editor of the parameters, on the locations 1/1/1/1 and 1/1/1/2, of which the first has a row.
class ParamEditor : public EmptyHallEditor {
protected:
    void SetUp() override;

    /// Value of a column of that row.
    void store(const QString& column, const QString& value);
    QString stored(const QString& column);
    /// Opens the window with a parameter of 1/1/1/1 chosen.
    void openOn(const QString& parameter);

    QLineEdit* value() const { return box("txtParamValueLocalization"); }
    QTimer* timer() const { return control<QTimer>("Timer1"); }
    Picture shown() const { return control<PictureBox>("impPictureSur")->picture(); }
    bool pictureFrame() const { return frame("frmWathSurPicture")->isVisible(); }
    QAction* saveButton() const { return toolBar("tlbSaveParamLocalization")->button(1); }
    void save() { clickButton("tlbSaveParamLocalization", "key_Save"); }
    QList<QStringList> savings() const { return warehouse.calls(QStringLiteral("kolv_mag_Add_Value_Param")); }

    /// Puts a file on drive C and chooses it in the dialog of the picture; its path.
    QString chooseFile(const QString& name, const QByteArray& bytes);
    void pickFile(const QString& path);
};

}  // namespace regalon::test
