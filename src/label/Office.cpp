#include "label/Office.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

#include <LibreOfficeKit/LibreOfficeKit.hxx>

namespace regalon::label {

namespace {

/// LibreOfficeKit's number for text documents; its header gives the names to unstable users only.
constexpr int kTextDocument = 0;

/// The file with which LibreOffice's program folder is recognised, in its two builds.
bool isProgramFolder(const QString& folder) {
    return QFile::exists(folder + QStringLiteral("/libsofficeapp.so")) ||
           QFile::exists(folder + QStringLiteral("/libmergedlo.so"));
}

QString findProgramFolder(const QString& given) {
    if (!given.isEmpty())
        return isProgramFolder(given) ? given : QString();
    QStringList folders{QStringLiteral("/usr/lib/libreoffice/program"),
                        QStringLiteral("/usr/lib64/libreoffice/program")};
    const QDir opt(QStringLiteral("/opt"));
    // The newest of several first.
    for (const QString& name : opt.entryList({QStringLiteral("libreoffice*")}, QDir::Dirs, QDir::Reversed))
        folders.append(opt.filePath(name) + QStringLiteral("/program"));
    for (const QString& folder : folders) {
        if (isProgramFolder(folder))
            return folder;
    }
    return {};
}

[[noreturn]] void failNotInstalled() {
    throw Failure{CannotCreateObject,
                  QStringLiteral("Etykiety drukuje LibreOffice Writer, którego nie ma na tym komputerze. "
                                 "Zainstaluj pakiet libreoffice-writer-nogui albo libreoffice-writer. ")};
}

/// Texts as the source of a macro has them.
QString literals(const QStringList& texts) {
    QStringList literals;
    for (QString text : texts) {
        if (text.contains(u'\n') || text.contains(u'\r'))
            throw Failure{AutomationError, QStringLiteral("Argument makra ma więcej niż jeden wiersz. ")};
        literals.append(u'"' + text.replace(u'"', QStringLiteral("\"\"")) + u'"');
    }
    return literals.join(QStringLiteral(", "));
}

/// What Call.bas tells of a macro. It tells nothing when the macro's module does not compile.
void judge(const QString& macro, const QString& result) {
    const QStringList lines = result.split(u'\n');
    const QString& word = lines.front();
    if (word == u"done")
        return;
    QString why = QStringLiteral("Makro \"") + macro + QStringLiteral("\" ma błąd składni i nie działa. ");
    if (word == u"failed")
        why = QStringLiteral("Makro \"") + macro + QStringLiteral("\" zakończyło się błędem ") +
              lines.value(1) + QStringLiteral(": ") + lines.mid(2).join(u' ').trimmed() + u' ';
    throw Failure{AutomationError, why};
}

QByteArray url(const QString& path) {
    return QUrl::fromLocalFile(path).toEncoded();
}

void writeFile(const QString& path, const QByteArray& content) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.flush())
        throw Failure{AutomationError, file.errorString() + QStringLiteral(": ") + path};
}

QByteArray readFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

Office::Office(const QString& programFolder, const QString& workspace) : m_workspace(workspace) {
    const QString folder = findProgramFolder(programFolder);
    if (folder.isEmpty())
        failNotInstalled();
    prepareProfile();
    load(folder);
    installRunner();
}

Office::~Office() {
    m_document.reset();
}

void Office::prepareProfile() const {
    const QString user = m_workspace + QStringLiteral("/profile/user");
    QDir().mkpath(user);
    writeFile(user + QStringLiteral("/registrymodifications.xcu"),
              readFile(QStringLiteral(":/profile/registrymodifications.xcu")));
}

void Office::load(const QString& programFolder) {
    m_office.reset(lok::lok_cpp_init(programFolder.toLocal8Bit().constData(),
                                     url(m_workspace + QStringLiteral("/profile")).constData()));
    if (!m_office) {
        throw Failure{CannotCreateObject,
                      QStringLiteral("LibreOffice w folderze \"") + programFolder +
                          QStringLiteral("\" nie daje się uruchomić. Sprawdź, czy zainstalowany jest pakiet "
                                         "libreoffice-writer-nogui albo libreoffice-writer. ")};
    }
}

/// A first start fills the profile with LibreOffice's own empty library; it is read when the first macro
/// runs.
void Office::installRunner() const {
    const QString basic = m_workspace + QStringLiteral("/profile/user/basic/Standard");
    QDir().mkpath(basic);
    for (const QString& name : {QStringLiteral("script.xlb"), QStringLiteral("Runner.xba")})
        writeFile(basic + u'/' + name, readFile(QStringLiteral(":/profile/") + name));
}

QString Office::lastError() const {
    char* const text = m_office->getError();
    const QString error = QString::fromUtf8(text);
    m_office->freeError(text);
    return error;
}

void Office::requireDocument() const {
    if (!m_document)
        throw Failure{AutomationError, QStringLiteral("Nie ma otwartego dokumentu. ")};
}

void Office::open(const QString& path) {
    m_document.reset();
    m_name = QFileInfo(path).fileName();
    m_document.reset(
        m_office->documentLoad(url(path).constData(), "MacroSecurityLevel=0,EnableMacrosExecution=true"));
    if (!m_document) {
        throw Failure{AutomationError, QStringLiteral("Plik \"") + path +
                                           QStringLiteral("\" nie daje się otworzyć: ") + lastError() + u' '};
    }
    if (m_document->getDocumentType() != kTextDocument) {
        m_document.reset();
        throw Failure{AutomationError, QStringLiteral("Plik \"") + path +
                                           QStringLiteral("\" nie jest dokumentem tekstowym. ")};
    }
}

void Office::run(const QString& macro, const QStringList& arguments) {
    requireDocument();
    const QString module = prepareCall(macro, arguments);
    if (module.isEmpty())
        throw Failure{AutomationError,
                      QStringLiteral("Szablon nie ma makra \"") + macro + QStringLiteral("\". ")};
    runMacro("macro://./" + module.toUtf8() + ".LabelCall" + QByteArray::number(m_calls) + "()");
    judge(macro, takeAnswer(QStringLiteral("result")));
}

/// Adds the call of a macro to its module and answers the module's name; empty when no module has the macro.
QString Office::prepareCall(const QString& macro, const QStringList& arguments) {
    QString source = QString::fromUtf8(readFile(QStringLiteral(":/profile/Call.bas")));
    source.replace(QStringLiteral("@NUMBER@"), QString::number(++m_calls));
    source.replace(QStringLiteral("@MACRO@"), macro);
    source.replace(QStringLiteral("@ARGUMENTS@"), literals(arguments));
    source.replace(QStringLiteral("@FOLDER@"), QString::fromUtf8(url(m_workspace)));
    writeFile(m_workspace + QStringLiteral("/request"), (macro + u'\n' + source).toUtf8());
    runMacro("macro:///Standard.Runner.Prepare(\"" + url(m_workspace) + "\")");
    return takeAnswer(QStringLiteral("module"));
}

void Office::runMacro(const QByteArray& call) {
    if (!m_office->runMacro(call.constData()))
        throw Failure{AutomationError, lastError() + u' '};
}

/// What a macro has left in a file of the workspace; empty for nothing.
QString Office::takeAnswer(const QString& name) const {
    QFile file(m_workspace + u'/' + name);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QString answer = QString::fromUtf8(file.readAll());
    file.remove();
    return answer;
}

QString Office::pages() {
    requireDocument();
    const QString file = m_workspace + QStringLiteral("/pages.pdf");
    if (!m_document->saveAs(url(file).constData(), "pdf", ""))
        throw Failure{AutomationError, lastError() + u' '};
    return file;
}

void Office::close() {
    requireDocument();
    m_document.reset();
}

}  // namespace regalon::label
