#pragma once

#include <QString>
#include <QStringList>

#include <memory>

namespace lok {
class Document;
class Office;
}  // namespace lok

namespace regalon::label {

/// What went wrong, for the user to read.
struct Failure {
    int number;  ///< of the client's run-time errors
    QString description;
};

inline constexpr int CannotCreateObject = 429;
inline constexpr int AutomationError = 440;

/// LibreOffice inside this process, with one document at most. Everything that fails throws Failure.
class Office {
public:
    /// Loads LibreOffice from its program folder; empty: from where Debian and LibreOffice's own packages
    /// put it. The workspace is an empty folder for this process alone: LibreOffice keeps its settings there.
    /// The user's own settings, and a LibreOffice that he works with, are not touched.
    Office(const QString& programFolder, const QString& workspace);
    ~Office();
    Office(const Office&) = delete;
    Office& operator=(const Office&) = delete;

    /// Opens a document whose macros may run, without asking: the caller vouches for it.
    void open(const QString& path);
    /// Runs a macro of the document, in whichever module it is, with texts without line ends.
    void run(const QString& macro, const QStringList& arguments);
    /// The pages of the document as a PDF file in the workspace.
    QString pages();
    void close();
    /// Name of the open document, for the list of print jobs.
    QString documentName() const { return m_name; }

private:
    void prepareProfile() const;
    void installRunner() const;
    void load(const QString& programFolder);
    QString prepareCall(const QString& macro, const QStringList& arguments);
    void runMacro(const QByteArray& call);
    QString takeAnswer(const QString& name) const;
    QString lastError() const;
    void requireDocument() const;

    QString m_workspace;
    QString m_name;
    int m_calls = 0;  ///< so that each call has a name of its own
    std::unique_ptr<lok::Office> m_office;
    std::unique_ptr<lok::Document> m_document;
};

}  // namespace regalon::label
