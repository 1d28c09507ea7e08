#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

class QWidget;

namespace regalon {

/// The file dialog of a form, on it under the name "CommonDialog". It has nothing to see until it is opened
/// and keeps its properties from one opening to the next. All paths are paths of the system.
class CommonDialog : public QObject {
    Q_OBJECT

public:
    explicit CommonDialog(QWidget* form);

    /// Empty: the platform's own title.
    QString DialogTitle() const { return m_dialogTitle; }
    void setDialogTitle(const QString& title) { m_dialogTitle = title; }
    /// Pairs of a description and its patterns, all parted by "|" and patterns by ";", as in
    /// "Obrazy|*.ico;*.bmp|Wszystkie|*". A description without patterns stands for all files.
    QString Filter() const { return m_filter; }
    void setFilter(const QString& filter) { m_filter = filter; }
    /// Folder to begin in; one that does not exist counts as empty: the current folder.
    QString InitDir() const { return m_initDir; }
    void setInitDir(const QString& folder) { m_initDir = folder; }
    /// The chosen file, with its whole path. It need not exist, since the user may type a name.
    QString FileName() const { return m_fileName; }
    void setFileName(const QString& fileName) { m_fileName = fileName; }

    /// Shows the dialog and waits. After a cancelled one FileName is what it was. While a FileDialogRecorder
    /// exists no window opens and the recorder answers.
    void ShowOpen();

private:
    QStringList nameFilters() const;

    QString m_dialogTitle;
    QString m_filter;
    QString m_initDir;
    QString m_fileName;
};

/// Records the file dialogs that would be shown during its life and answers them. Recorders nest; the newest
/// one works.
class FileDialogRecorder {
public:
    struct Opening {
        QString Title;
        QString Filter;
        QString InitDir;
        QString FileName;
    };

    FileDialogRecorder();
    ~FileDialogRecorder();
    FileDialogRecorder(const FileDialogRecorder&) = delete;
    FileDialogRecorder& operator=(const FileDialogRecorder&) = delete;

    /// Queues the file for a coming dialog. A dialog without a queued file, or with an empty one, is
    /// cancelled.
    void answer(const QString& fileName) { m_answers.append(fileName); }
    const QList<Opening>& openings() const { return m_openings; }

private:
    friend class CommonDialog;
    QString record(const Opening& opening);

    QList<Opening> m_openings;
    QStringList m_answers;
    FileDialogRecorder* m_outer;
};

}  // namespace regalon
