#include "platform/fuzz/ProfileChecks.h"

#include "platform/PrivateProfile.h"
#include "support/Require.h"

namespace regalon::test {

void checkProfile(const QByteArray& bytes) {
    const QString section = QStringLiteral("Section");
    const QString key = QStringLiteral("Key");
    constexpr qsizetype size = 16;
    require(PrivateProfile::stringIn(bytes, section, key, QString(), size).size() < size,
            "a value fits its buffer");
    const QByteArray lines = PrivateProfile::sectionIn(bytes, section);
    const QByteArray written = PrivateProfile::withSection(bytes, section, lines);
    require(PrivateProfile::sectionIn(written, section) == lines, "what was written is read");
    require(PrivateProfile::withSection(written, section, lines) == written, "written again it stays");
    const QByteArray added = PrivateProfile::withSection(bytes, QStringLiteral("Other"), "a=1");
    require(PrivateProfile::sectionIn(added, section) == lines,
            "another section changes nothing of this one");
}

}  // namespace regalon::test
