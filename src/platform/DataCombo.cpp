#include "platform/DataCombo.h"

#include "platform/Convert.h"

#include <utility>

namespace regalon {

DataCombo::DataCombo(QWidget* parent) : QComboBox(parent) {
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    connect(this, &QComboBox::activated, this, &DataCombo::onActivated);
}

void DataCombo::setRowSource(const RowSource& source) {
    m_source = source;
    m_newRows = true;
    rebuild();
}

void DataCombo::clearRowSource() {
    setRowSource({});
}

void DataCombo::setBoundColumn(const QString& column) {
    m_boundColumn = column;
}

void DataCombo::setListField(const QString& column) {
    if (column == m_listField)
        return;
    m_listField = column;
    rebuild();
}

void DataCombo::setBoundText(const QString& text) {
    for (int row = 0; row < count() && !text.isEmpty(); ++row) {
        if (cell(row, m_boundColumn) == text) {
            chooseAndTell(row, text, itemText(row));
            return;
        }
    }
    chooseAndTell(-1, text, QString());
}

QString DataCombo::text() const {
    return currentIndex() >= 0 ? currentText() : m_freeText;
}

void DataCombo::setText(const QString& text) {
    if (currentIndex() >= 0 && currentText() == text)
        return;
    const int row = text.isEmpty() ? -1 : findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    chooseAndTell(row, row >= 0 ? cell(row, m_boundColumn) : QString(), text);
}

void DataCombo::rebuild() {
    const QString shown = text();
    const QString bound = m_boundText;
    clear();
    QStringList texts;
    texts.reserve(m_source.Rows.size());
    for (int row = 0; row < static_cast<int>(m_source.Rows.size()); ++row)
        texts.append(cell(row, m_listField));
    addItems(texts);
    int chosen = -1;
    for (int row = 0; row < count() && chosen < 0; ++row) {
        if (!bound.isEmpty() && cell(row, m_boundColumn) == bound && itemText(row) == shown)
            chosen = row;
    }
    choose(chosen, bound, shown);
}

void DataCombo::choose(int row, const QString& boundText, const QString& text) {
    m_boundText = boundText;
    m_freeText = row >= 0 ? QString() : text;
    setPlaceholderText(m_freeText);
    setCurrentIndex(row);
}

void DataCombo::chooseAndTell(int row, const QString& boundText, const QString& text) {
    const bool newContent =
        std::exchange(m_newRows, false) || boundText != m_boundText || text != this->text();
    choose(row, boundText, text);
    if (newContent)
        Q_EMIT changed();
}

int DataCombo::columnIndex(const QString& name) const {
    for (int column = 0; column < static_cast<int>(m_source.Columns.size()); ++column) {
        if (m_source.Columns[column].compare(name, Qt::CaseInsensitive) == 0)
            return column;
    }
    return -1;
}

QString DataCombo::cell(int row, const QString& column) const {
    const QVariant value = m_source.Rows[row].value(columnIndex(column));
    return value.isValid() ? ToText(value) : QString();
}

void DataCombo::onActivated(int row) {
    const QString bound = cell(row, m_boundColumn);
    const bool newContent = bound != m_boundText || !m_freeText.isEmpty();
    m_newRows = false;
    choose(row, bound, itemText(row));
    Q_EMIT userChanged();
    if (newContent)
        Q_EMIT changed();
}

}  // namespace regalon
