#pragma once

#include "program/ProgramTest.h"

#include <QString>
#include <QStringList>

namespace regalon::test {

/// A storekeeper at the shift window of the program. `source` is a location of one material with several
/// packages of it.
class ShiftProgram : public ProgramTest {
protected:
    /// Where the mouse goes, twips of the plan: the buttons and the check boxes of first rows.
    struct Place {
        int left;
        int top;
    };
    static constexpr Place kAcceptLocation{1500, 9430};
    static constexpr Place kAcceptItem{2200, 3660};
    static constexpr Place kAcceptShift{2200, 7860};
    static constexpr Place kFirstPackage{1655, 1150};
    static constexpr Place kFirstProposal{1655, 4575};
    static constexpr int kRowHeight = 270;
    static constexpr int kRowsInSight = 11;

    using ProgramTest::ProgramTest;
    void SetUp() override;

    /// Opens the shift window by the menu and waits for its plan.
    void openShift();
    void clickAt(const Place& place) const { display.click(plan.at(place.left, place.top)); }
    /// Clicks the check box of a row, from 1, below the first row's.
    void clickRow(const Place& first, int number) const {
        clickAt({first.left, first.top + (number - 1) * kRowHeight});
    }
    /// Picks a location and sees the packages of its material.
    void pickPackages(const Spot& spot);
    /// Ticks the package in a row of the list of packages and sees its proposals.
    void tickPackage(int row, const QString& barCode);

    /// Waits for a call of a procedure whose values begin with these.
    bool called(const QString& procedure, const QStringList& values) const;
    /// The first value that a query finds.
    QString one(const QString& sql) const;
    /// "rank/stand/shelf/location" of a package.
    QString placeOf(const QString& barCode) const;
    /// Whose staged rows hold the package.
    int stagedRows(const QString& barCode) const;
    static QStringList numbers(const Spot& spot);

    Spot source;
};

}  // namespace regalon::test
