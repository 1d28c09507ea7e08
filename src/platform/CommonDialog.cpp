#include "platform/CommonDialog.h"

#include "platform/Paths.h"

#include <QFileDialog>
#include <QWidget>

#include <utility>

namespace regalon {
namespace {

FileDialogRecorder*& newestRecorder() {
    static FileDialogRecorder* recorder = nullptr;
    return recorder;
}

/// What the toolkit's dialog calls a filter.
QString nameFilter(const QString& description, const QString& patterns) {
    const QString names = patterns.isEmpty() ? QStringLiteral("*") : QString(patterns).replace(u';', u' ');
    return QStringLiteral("%1 (%2)").arg(description, names);
}

}  // namespace

CommonDialog::CommonDialog(QWidget* form) : QObject(form) {
    setObjectName(QStringLiteral("CommonDialog"));
}

QStringList CommonDialog::nameFilters() const {
    QStringList filters;
    if (m_filter.isEmpty())
        return filters;
    const QStringList pieces = m_filter.split(u'|');
    for (qsizetype piece = 0; piece < pieces.size(); piece += 2)
        filters.append(nameFilter(pieces.at(piece), pieces.value(piece + 1)));
    return filters;
}

void CommonDialog::ShowOpen() {
    if (FileDialogRecorder* recorder = newestRecorder()) {
        const QString answer = recorder->record({m_dialogTitle, m_filter, m_initDir, m_fileName});
        if (!answer.isEmpty())
            m_fileName = answer;
        return;
    }
    QFileDialog dialog(qobject_cast<QWidget*>(parent()), m_dialogTitle);
    dialog.setObjectName(QStringLiteral("FileDialog"));
    // The desktop's own dialog may refuse the name of a file that does not exist.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setNameFilters(nameFilters());
    if (Paths::folderExists(m_initDir))
        dialog.setDirectory(Paths::toFile(m_initDir));
    if (!m_fileName.isEmpty())
        dialog.selectFile(Paths::toFile(m_fileName));
    if (dialog.exec() == QDialog::Accepted)
        m_fileName = Paths::fromFile(dialog.selectedFiles().value(0));
}

FileDialogRecorder::FileDialogRecorder() : m_outer(std::exchange(newestRecorder(), this)) {}

FileDialogRecorder::~FileDialogRecorder() {
    newestRecorder() = m_outer;
}

QString FileDialogRecorder::record(const Opening& opening) {
    m_openings.append(opening);
    return m_answers.isEmpty() ? QString() : m_answers.takeFirst();
}

}  // namespace regalon
