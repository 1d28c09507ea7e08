#pragma once

#include <QIcon>
#include <QString>

class QFrame;
class QGroupBox;
class QLabel;
class QWidget;

namespace regalon {

/// The plain controls that every form is made of. All belong to `parent` and carry their design name.

/// A frame with its caption in the border, and one without a caption, whose border is its edge.
QGroupBox* addFrame(QWidget* parent, const char* name, const QString& caption);
QFrame* addPanel(QWidget* parent, const char* name);

/// A label shows its text as it stands, whatever marks of other programs are in it.
QLabel* addLabel(QWidget* parent, const char* name, const QString& text = QString(), bool bold = false);

/// An icon that the program carries inside, such as "exit.ico".
QIcon programIcon(const QString& file);

}  // namespace regalon
