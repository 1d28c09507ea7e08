#include "common/modINIModule.h"

#include "platform/CodePage.h"
#include "platform/Convert.h"
#include "platform/Paths.h"
#include "platform/PrivateProfile.h"
#include "platform/RunTimeError.h"

#include <QStringList>

namespace regalon {

using namespace Qt::StringLiterals;

namespace {

const QString formsSection = u"Forms"_s;
const QString gridsSection = u"Grids"_s;
const QString flexSection = u"MSFlex"_s;
const QString filterSection = u"ExtraFilter"_s;

/// The text as it stands, if it is a whole number of 32 bits. Raises 13 or 6 else.
QString wholeNumber(QStringView text) {
    const QString number = text.toString();
    ToInt32(number);
    return number;
}

/// What stands before the first `sign` from `from` on, and what stands behind it. Raises 13 without one.
std::pair<QStringView, QStringView> halves(QStringView text, QChar sign, qsizetype from = 0) {
    const qsizetype at = text.indexOf(sign, from);
    if (at < 0) {
        throw RunTimeError(RunTime::TypeMismatch);
    }
    return {text.left(at), text.mid(at + 1)};
}

template <class Entry, class Line>
void saveSection(const QString& file, const QString& section, const QList<Entry>& entries, Line line) {
    QByteArrayList lines;
    for (const Entry& entry : entries) {
        lines.append(CodePage::fromText(line(entry)));
    }
    PrivateProfile::writeSection(file, section, lines.join('\0'));
}

}  // namespace

QString modINIModule::fileOf(const QString& name) {
    if (name.contains(u'/') || name.contains(u'\\')) {
        return {};
    }
    const QString ending = u".ini"_s;
    return Paths::composePath(Paths::machineTemporaryFolder(), name.endsWith(ending) ? name : name + ending);
}

qint32 modINIModule::ProfileExists(const QString& name) {
    m_opened.close();
    try {
        Paths::open(m_opened, fileOf(name), QIODevice::ReadOnly);
    } catch (const RunTimeError& error) {
        return error.number();
    }
    return 0;
}

void modINIModule::ProfileLoad(const QString& name) {
    const QString file = fileOf(name);
    m_forms.clear();
    m_grids.clear();
    m_flexGrids.clear();
    m_filters.clear();
    loadSection(file, formsSection, &modINIModule::takeForm);
    loadSection(file, gridsSection, &modINIModule::takeGrid);
    loadSection(file, flexSection, &modINIModule::takeFlexGrid);
    loadSection(file, filterSection, &modINIModule::takeFilter);
}

void modINIModule::loadSection(const QString& file, const QString& section, Take take) {
    for (const QByteArray& bytes : PrivateProfile::section(file, section).split('\0')) {
        const QString line = CodePage::toText(bytes);
        const qsizetype sign = line.indexOf(u'=');
        if (sign < 0) {
            continue;
        }
        try {
            (this->*take)(line.left(sign), QStringView(line).mid(sign + 1));
        } catch (const RunTimeError&) {
            // The other lines are good all the same.
        }
    }
}

void modINIModule::takeForm(const QString& name, QStringView value) {
    const QList<QStringView> parts = value.split(u',');
    Form form{name, {}};
    if (parts.size() != static_cast<qsizetype>(form.numbers.size())) {
        throw RunTimeError(RunTime::TypeMismatch);
    }
    for (std::size_t i = 0; i < form.numbers.size(); ++i) {
        form.numbers[i] = wholeNumber(parts[static_cast<qsizetype>(i)]);
    }
    m_forms.append(form);
}

void modINIModule::takeGrid(const QString& name, QStringView value) {
    const auto [numbers, list] = halves(value, u':');
    // The first character cannot part the numbers: there it is a sign.
    const auto [first, second] = halves(numbers, u'-', 1);
    m_grids.append({name, {wholeNumber(first), wholeNumber(second)}, list.toString()});
}

void modINIModule::takeFlexGrid(const QString& name, QStringView value) {
    m_flexGrids.append({name, value.toString()});
}

void modINIModule::takeFilter(const QString& name, QStringView value) {
    const auto [number, text] = halves(value, u':');
    if (!text.endsWith(u'#')) {
        throw RunTimeError(RunTime::TypeMismatch);
    }
    ToDouble(number.toString());
    m_filters.append({name, number.toString(), text.chopped(1).toString()});
}

void modINIModule::ProfileSave(const QString& name) const {
    const QString file = fileOf(name);
    saveSection(file, formsSection, m_forms, [](const Form& form) {
        const auto& [a, b, c, d] = form.numbers;
        return form.name + u'=' + a + u',' + b + u',' + c + u',' + d;
    });
    saveSection(file, gridsSection, m_grids, [](const Grid& grid) {
        return grid.name + u'=' + grid.numbers[0] + u'-' + grid.numbers[1] + u':' + grid.list;
    });
    saveSection(file, flexSection, m_flexGrids,
                [](const FlexGrid& grid) { return grid.name + u'=' + grid.list; });
    saveSection(file, filterSection, m_filters, [](const Filter& filter) {
        return filter.name + u'=' + filter.number + u':' + filter.text + u'#';
    });
}

qint32 modINIModule::LoadUserProfile(const QString& name) {
    const qint32 failure = ProfileExists(name);
    if (failure == 0) {
        ProfileLoad(name);
    }
    return failure;
}

}  // namespace regalon
