#pragma once

#include <QComboBox>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace regalon {

/// Rows of a query for a combo: the names of its columns and the values of each row (NULL is an invalid
/// QVariant).
struct RowSource {
    QStringList Columns;
    QList<QList<QVariant>> Rows;
};

/// A drop-down list bound to rows: the list field is shown, the bound column is the key. It keeps the rows
/// for as long as it shows them.
class DataCombo : public QComboBox {
    Q_OBJECT

public:
    explicit DataCombo(QWidget* parent = nullptr);

    /// Shows new rows. Bound text and text stay as they were until they are set or the user chooses.
    void setRowSource(const RowSource& source);
    /// Takes the rows away; bound text and text stay.
    void clearRowSource();
    const RowSource& rowSource() const { return m_source; }

    /// Names of columns, compared without case. A name that the rows do not have shows or binds nothing.
    void setBoundColumn(const QString& column);
    QString boundColumn() const { return m_boundColumn; }
    void setListField(const QString& column);
    QString listField() const { return m_listField; }

    /// The key of the chosen row, or the key last set where no row has it. Setting one that a row has chooses
    /// that row (the first such); any other empties the text.
    QString boundText() const { return m_boundText; }
    void setBoundText(const QString& text);

    /// What the combo shows. Setting the text of a row chooses that row; any other is shown as it is and
    /// empties the bound text.
    QString text() const;
    void setText(const QString& text);

Q_SIGNALS:
    /// The user chose a row; bound text and text are those of the row.
    void userChanged();
    /// The content is another one: the user or the code chose another key or text. Also when code sets the
    /// old key in rows that have just come: what stands behind it is new.
    void changed();

private:
    void rebuild();
    void choose(int row, const QString& boundText, const QString& text);
    void chooseAndTell(int row, const QString& boundText, const QString& text);
    int columnIndex(const QString& name) const;
    QString cell(int row, const QString& column) const;
    void onActivated(int row);

    RowSource m_source;
    QString m_boundColumn;
    QString m_listField;
    QString m_boundText;
    QString m_freeText;
    bool m_newRows = false;
};

}  // namespace regalon
