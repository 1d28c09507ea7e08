#pragma once

#include <QFile>
#include <QList>
#include <QString>
#include <QStringView>
#include <QtGlobal>

#include <array>

namespace regalon {

/// A user's layout of windows and grids, kept in an .ini file in the machine's temporary folder. No window
/// reads or changes it yet: it is loaded at the start and saved at the end, so that a file comes back as it
/// was. Therefore numbers are kept as they are written, once it is sure that they are numbers.
///
/// Nothing here throws or reports: a profile is a convenience.
class modINIModule {
public:
    /// name=a,b,c,d: left, top, width and height of a window.
    struct Form {
        QString name;
        std::array<QString, 4> numbers;
    };
    /// name=a-b:list, the list of columns in fields of fixed width.
    struct Grid {
        QString name;
        std::array<QString, 2> numbers;
        QString list;
    };
    /// name=list
    struct FlexGrid {
        QString name;
        QString list;
    };
    /// name=a:text#
    struct Filter {
        QString name;
        QString number;
        QString text;
    };

    /// The file of a name: in the temporary folder, with ".ini" behind a name that does not end with it.
    /// Empty for a name that would leave that folder: it has no profile.
    static QString fileOf(const QString& name);

    /// 0 if the file of the name can be opened for reading, else the number of the failure. The file stays
    /// open until the next call or the end of this object.
    qint32 ProfileExists(const QString& name);

    /// Takes the four sections over in place of what the tables hold. A line that has not the form of its
    /// section is lost, and no other.
    void ProfileLoad(const QString& name);

    /// Writes the four tables, each in the place of its whole section. Where the file cannot be written the
    /// old one stays.
    void ProfileSave(const QString& name) const;

    /// Loads the profile if its file is there. The number of the failure, 0 for none.
    qint32 LoadUserProfile(const QString& name);
    void SaveUserProfile(const QString& name) const { ProfileSave(name); }

    const QList<Form>& Forms() const { return m_forms; }
    const QList<Grid>& Grids() const { return m_grids; }
    const QList<FlexGrid>& MSFlex() const { return m_flexGrids; }
    const QList<Filter>& ExtraFilter() const { return m_filters; }

private:
    void takeForm(const QString& name, QStringView value);
    void takeGrid(const QString& name, QStringView value);
    void takeFlexGrid(const QString& name, QStringView value);
    void takeFilter(const QString& name, QStringView value);

    using Take = void (modINIModule::*)(const QString& name, QStringView value);
    void loadSection(const QString& file, const QString& section, Take take);

    QFile m_opened;
    QList<Form> m_forms;
    QList<Grid> m_grids;
    QList<FlexGrid> m_flexGrids;
    QList<Filter> m_filters;
};

}  // namespace regalon
