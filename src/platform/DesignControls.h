#pragma once

#include <QIcon>
#include <QString>

#include <initializer_list>

class QFrame;
class QGroupBox;
class QLabel;
class QLineEdit;
class QWidget;

namespace regalon {

class ImageList;

/// The plain controls that every form is made of. All belong to `parent` and carry their design name.

/// A frame with its caption in the border, and one without a caption, whose border is its edge.
QGroupBox* addFrame(QWidget* parent, const char* name, const QString& caption);
QFrame* addPanel(QWidget* parent, const char* name);

/// A label shows its text as it stands, whatever marks of other programs are in it.
QLabel* addLabel(QWidget* parent, const char* name, const QString& text = QString(), bool bold = false);

/// A box for a short number; the meaning is its tool tip.
QLineEdit* addNumberBox(QWidget* parent, const char* name, const QString& meaning);

/// An icon that the program carries inside, such as "exit.ico".
QIcon programIcon(const QString& file);

/// Gives a list of icons the program's pictures of rows, each under its own number of two digits.
void setRowIcons(ImageList& icons, std::initializer_list<int> numbers);

}  // namespace regalon
