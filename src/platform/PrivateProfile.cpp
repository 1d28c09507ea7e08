#include "platform/PrivateProfile.h"

#include "platform/CodePage.h"
#include "platform/Paths.h"
#include "platform/ReplaceFile.h"
#include "platform/RunTimeError.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include <optional>

namespace regalon::PrivateProfile {
namespace {

constexpr qint64 maxFileBytes = 1 << 20;

const QByteArray utf8Mark = QByteArrayLiteral("\xEF\xBB\xBF");
const QByteArray defaultLineEnd = QByteArrayLiteral("\r\n");

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

QByteArray trimmed(const QByteArray& text) {
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && isBlank(text[begin])) {
        ++begin;
    }
    while (end > begin && isBlank(text[end - 1])) {
        --end;
    }
    return text.mid(begin, end - begin);
}

QByteArray unquoted(const QByteArray& value) {
    const bool quoted =
        value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.front() == value.back();
    return quoted ? value.mid(1, value.size() - 2) : value;
}

QByteArray upToNul(const QByteArray& value) {
    const qsizetype nul = value.indexOf('\0');
    return nul < 0 ? value : value.left(nul);
}

bool isUtf8(const QByteArray& bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(bytes);
    // An incomplete character at the end is kept back by the decoder; one more byte shows it.
    const QString rest = decoder(QByteArrayLiteral(" "));
    return !decoder.hasError() && rest == QLatin1String(" ");
}

/// Without the part of a character of UTF-8 that a cut has left at the end.
QByteArray wholeCharacters(const QByteArray& bytes) {
    qsizetype lead = bytes.size() - 1;
    while (lead > 0 && (static_cast<unsigned char>(bytes[lead]) & 0xC0U) == 0x80U) {
        --lead;
    }
    return lead >= 0 && !isUtf8(bytes.mid(lead)) ? bytes.left(lead) : bytes;
}

class Text {
public:
    explicit Text(const QByteArray& file) : m_utf8(isUtf8(file)) {}
    QString of(const QByteArray& bytes) const {
        return m_utf8 ? QString::fromUtf8(bytes) : CodePage::toText(bytes);
    }
    bool isSame(const QByteArray& bytes, const QString& name) const {
        return of(trimmed(bytes)).compare(name.trimmed(), Qt::CaseInsensitive) == 0;
    }
    QByteArray cut(const QByteArray& bytes, qsizetype size) const {
        if (bytes.size() < size) {
            return bytes;
        }
        const QByteArray kept = bytes.left(qMax<qsizetype>(size - 1, 0));
        return m_utf8 ? wholeCharacters(kept) : kept;
    }

private:
    bool m_utf8;
};

/// Walks the lines of a file.
class Lines {
public:
    explicit Lines(const QByteArray& text, qsizetype from = 0) : m_file(text), m_next(from) {}
    bool next() {
        if (m_next >= m_file.size()) {
            return false;
        }
        m_begin = m_next;
        const qsizetype feed = m_file.indexOf('\n', m_begin);
        m_next = feed < 0 ? m_file.size() : feed + 1;
        m_end = feed < 0 ? m_file.size() : feed;
        while (m_end > m_begin && m_file[m_end - 1] == '\r') {
            --m_end;
        }
        return true;
    }
    /// The line without its end.
    QByteArray line() const { return m_file.mid(m_begin, m_end - m_begin); }
    qsizetype begin() const { return m_begin; }
    qsizetype behind() const { return m_next; }

private:
    const QByteArray& m_file;
    qsizetype m_begin = 0;
    qsizetype m_end = 0;
    qsizetype m_next;
};

/// The name of the section that a line opens.
std::optional<QByteArray> header(const QByteArray& line) {
    const QByteArray text = trimmed(line);
    const qsizetype close = text.indexOf(']');
    if (!text.startsWith('[') || close < 0) {
        return std::nullopt;
    }
    return text.mid(1, close - 1);
}

/// Whether a line belongs to what a section holds.
bool isContent(const QByteArray& line) {
    const QByteArray text = trimmed(line);
    return !text.isEmpty() && !text.startsWith(';') && !header(text);
}

/// Where the lines of a section lie in the file.
struct Place {
    qsizetype begin;
    qsizetype end;
};

std::optional<Place> find(const QByteArray& file, const Text& text, const QString& section) {
    Lines lines(file, file.startsWith(utf8Mark) ? utf8Mark.size() : 0);
    std::optional<Place> place;
    while (lines.next()) {
        const std::optional<QByteArray> name = header(lines.line());
        if (name && place) {
            place->end = lines.begin();
            return place;
        }
        if (name && text.isSame(*name, section)) {
            place = Place{lines.behind(), file.size()};
        }
    }
    return place;
}

QByteArray body(const QByteArray& file, const Text& text, const QString& section) {
    const std::optional<Place> place = find(file, text, section);
    return place ? file.mid(place->begin, place->end - place->begin) : QByteArray();
}

QByteArray lineEndOf(const QByteArray& file) {
    const qsizetype feed = file.indexOf('\n');
    if (feed < 0) {
        return defaultLineEnd;
    }
    return feed > 0 && file[feed - 1] == '\r' ? defaultLineEnd : QByteArrayLiteral("\n");
}

/// Where the blank lines begin that end a section.
qsizetype endOfText(const QByteArray& file, const Place& place) {
    const QByteArray lines = file.mid(place.begin, place.end - place.begin);
    qsizetype end = 0;
    Lines walk(lines);
    while (walk.next()) {
        if (!trimmed(walk.line()).isEmpty()) {
            end = walk.behind();
        }
    }
    return place.begin + end;
}

QByteArray joined(const QByteArray& lines, const QByteArray& lineEnd) {
    QByteArray text;
    if (!lines.isEmpty()) {
        for (const QByteArray& line : lines.split('\0')) {
            text += line + lineEnd;
        }
    }
    return text;
}

QByteArray encoded(const QString& name, const QByteArray& file) {
    return isUtf8(file) && !file.isEmpty() ? name.toUtf8() : CodePage::fromText(name);
}

/// Nothing for what is no file of a profile's size, or cannot be read.
std::optional<QByteArray> contentOf(const QString& path) {
    QFile file;
    try {
        if (!Paths::fileExists(path)) {
            return std::nullopt;
        }
        Paths::open(file, path, QIODevice::ReadOnly);
    } catch (const RunTimeError&) {
        return std::nullopt;
    }
    const QByteArray bytes = file.read(maxFileBytes + 1);
    if (bytes.size() > maxFileBytes || file.error() != QFileDevice::NoError) {
        return std::nullopt;
    }
    return bytes;
}

}  // namespace

QString stringIn(const QByteArray& file, const QString& section, const QString& key, const QString& fallback,
                 qsizetype size) {
    const Text text(file);
    const QByteArray lines = body(file, text, section);
    Lines walk(lines);
    while (walk.next()) {
        const QByteArray line = trimmed(walk.line());
        const qsizetype sign = line.indexOf('=');
        if (sign >= 0 && !line.startsWith(';') && text.isSame(line.left(sign), key)) {
            return text.of(text.cut(upToNul(unquoted(trimmed(line.mid(sign + 1)))), size));
        }
    }
    return fallback;
}

QByteArray sectionIn(const QByteArray& file, const QString& section) {
    const QByteArray lines = body(file, Text(file), section);
    QByteArrayList kept;
    Lines walk(lines);
    while (walk.next()) {
        for (QByteArray piece : walk.line().split('\0')) {
            while (piece.endsWith('\r')) {
                piece.chop(1);
            }
            if (isContent(piece)) {
                kept.append(piece);
            }
        }
    }
    return kept.join('\0');
}

QByteArray withSection(const QByteArray& file, const QString& section, const QByteArray& lines) {
    const QByteArray lineEnd = lineEndOf(file);
    const auto closed = [&lineEnd](const QByteArray& text) {
        return text.isEmpty() || text == utf8Mark || text.endsWith('\n') ? text : text + lineEnd;
    };
    const QByteArray text = joined(lines, lineEnd);
    const std::optional<Place> place = find(file, Text(file), section);
    if (!place) {
        return closed(file) + '[' + encoded(section, file) + ']' + lineEnd + text;
    }
    return closed(file.left(place->begin)) + text + file.mid(endOfText(file, *place));
}

QString string(const QString& path, const QString& section, const QString& key, const QString& fallback,
               qsizetype size) {
    const std::optional<QByteArray> file = contentOf(path);
    return file ? stringIn(*file, section, key, fallback, size) : fallback;
}

QByteArray section(const QString& path, const QString& section) {
    const std::optional<QByteArray> file = contentOf(path);
    return file ? sectionIn(*file, section) : QByteArray();
}

bool writeSection(const QString& path, const QString& section, const QByteArray& lines) {
    const QString name = Paths::toFile(path);
    const bool isNew = !QFileInfo::exists(name) && !QFileInfo(name).isSymLink();
    const std::optional<QByteArray> old = isNew ? QByteArray() : contentOf(path);
    if (name.isEmpty() || !old) {
        return false;
    }
    try {
        replaceFile(name, withSection(*old, section, lines));
        return true;
    } catch (const RunTimeError&) {
        return false;
    }
}

}  // namespace regalon::PrivateProfile
