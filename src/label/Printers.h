#pragma once

#include <QString>

namespace regalon::label {

/// The printers of CUPS as one process sees them. Its active printer is where it prints; at first that is
/// the user's default printer (of lpoptions, LPDEST or the server). Other programs never see it change.
class Printers {
public:
    Printers();

    /// Empty without one.
    const QString& active() const { return m_active; }
    /// Throws Failure for a printer that CUPS does not know. An empty name is none.
    void setActive(const QString& name);
    /// Hands a file to CUPS, with the options that the user has for the printer. Returns when CUPS has it;
    /// paper and ink are CUPS's matter. Throws Failure.
    void print(const QString& file, const QString& title) const;

private:
    QString m_active;
};

}  // namespace regalon::label
