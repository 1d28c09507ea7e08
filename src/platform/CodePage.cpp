#include "platform/CodePage.h"

#include "platform/RunTimeError.h"

#include <QHash>

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>
#include <optional>

namespace regalon::CodePage {
namespace {

constexpr int QuestionMark = 63;

struct Table {
    QString name;
    std::array<QChar, 256> characters;
    QHash<QChar, int> codes;
    /// The codes of the first 256 characters, which most texts are made of.
    std::array<unsigned char, 256> codesOfFirst;

    /// To be called when the characters are complete.
    void makeCodes() {
        for (int code = 255; code >= 0; --code)
            codes.insert(characters[static_cast<std::size_t>(code)], code);
        for (std::size_t i = 0; i < codesOfFirst.size(); ++i)
            codesOfFirst[i] =
                static_cast<unsigned char>(codes.value(QChar(static_cast<ushort>(i)), QuestionMark));
    }
    int codeOf(QChar character) const {
        const char16_t unit = character.unicode();
        return unit < codesOfFirst.size() ? codesOfFirst[unit] : codes.value(character, QuestionMark);
    }
};

class Converter {
public:
    explicit Converter(const QByteArray& from) : m_handle(iconv_open("UTF-16LE", from.constData())) {}
    ~Converter() {
        if (isOpen())
            iconv_close(m_handle);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    // iconv_open reports failure by the handle of all bits set.
    bool isOpen() const { return reinterpret_cast<std::intptr_t>(m_handle) != -1; }

    /// Character of one byte: null for an undefined one; nothing if the byte alone is not a whole character.
    std::optional<QChar> character(int code) {
        char byte = static_cast<char>(code);
        std::array<unsigned char, 16> out{};
        char* in = &byte;
        char* to = reinterpret_cast<char*>(out.data());
        std::size_t inLeft = 1;
        std::size_t outLeft = out.size();
        iconv(m_handle, nullptr, nullptr, nullptr, nullptr);
        if (iconv(m_handle, &in, &inLeft, &to, &outLeft) == static_cast<std::size_t>(-1))
            return errno == EILSEQ ? std::optional<QChar>(QChar()) : std::nullopt;
        iconv(m_handle, nullptr, nullptr, &to, &outLeft);
        if (out.size() - outLeft != 2)
            return std::nullopt;
        return QChar(static_cast<char16_t>(out[0] | (out[1] << 8)));
    }

private:
    iconv_t m_handle;
};

std::optional<Table> readTable(const QString& name) {
    Converter converter(name.toUtf8());
    if (name.isEmpty() || !converter.isOpen())
        return std::nullopt;
    Table table;
    table.name = name;
    for (int code = 0; code < 256; ++code) {
        const std::optional<QChar> character = converter.character(code);
        if (!character)
            return std::nullopt;
        const bool undefined = character->isNull() && code != 0;
        table.characters[static_cast<std::size_t>(code)] = undefined ? QChar(code) : *character;
    }
    table.makeCodes();
    return table;
}

Table plainTable() {
    Table table;
    table.name = QStringLiteral("ISO-8859-1");
    for (int code = 0; code < 256; ++code)
        table.characters[static_cast<std::size_t>(code)] = QChar(code);
    table.makeCodes();
    return table;
}

Table& current() {
    static Table table = readTable(QStringLiteral("windows-1250")).value_or(plainTable());
    return table;
}

}  // namespace

bool set(const QString& name) {
    if (name == current().name)
        return true;
    std::optional<Table> table = readTable(name);
    if (!table)
        return false;
    current() = *std::move(table);
    return true;
}

QString name() {
    return current().name;
}

bool isKnown(const QString& name) {
    return readTable(name).has_value();
}

bool holds(const QString& name, const QString& text) {
    const std::optional<Table> table = readTable(name);
    return table && std::all_of(text.begin(), text.end(), [&table](QChar character) {
               return character == u'?' || table->codeOf(character) != QuestionMark;
           });
}

QByteArray fromText(const QString& text) {
    const Table& table = current();
    QByteArray bytes(text.size(), Qt::Uninitialized);
    char* end = bytes.data();
    for (qsizetype i = 0; i < text.size(); ++i) {
        *end++ = static_cast<char>(table.codeOf(text[i]));
        // A character of two UTF-16 units is one "?", as the system's own conversion writes it.
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate())
            ++i;
    }
    bytes.truncate(end - bytes.constData());
    return bytes;
}

QString toText(const QByteArray& bytes) {
    QString text;
    text.reserve(bytes.size());
    for (const char byte : bytes)
        text.append(charOf(static_cast<unsigned char>(byte)));
    return text;
}

int codeOf(QChar character) {
    return current().codeOf(character);
}

QChar charOf(int code) {
    if (code < 0 || code > 255)
        throw RunTimeError(RunTime::InvalidProcedureCall);
    return current().characters[static_cast<std::size_t>(code)];
}

}  // namespace regalon::CodePage
