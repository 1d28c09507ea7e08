#pragma once

#include "program/ProgramTest.h"

#include <QPoint>
#include <QStringList>

#include <array>
#include <functional>

namespace regalon::test {

/// A manager at the layout editor, with mouse and keys alone, in a hall without a single stand: rows,
/// materials and users of the demo are there, everything that the editor writes is not. Controls are found by
/// where the editor's design puts them in its frames.
class LayoutDesk : public ProgramTest {
protected:
    /// The frames that lie over the plan.
    enum Frame { StandFrame, LocationFrame, GroupFrame };
    /// The middle of a control, twips from the corner of its frame.
    struct Control {
        Frame frame;
        int left;
        int top;
    };
    /// A toolbar and the number of its buttons, twips.
    struct Bar {
        Frame frame;
        int left;
        int top;
        int width;
        int buttons;
    };

    static constexpr Control kRank{StandFrame, 2300, 320};
    static constexpr Control kStand{StandFrame, 2300, 740};
    static constexpr Control kShelf{StandFrame, 2300, 1160};
    static constexpr Control kIconName{StandFrame, 2500, 1760};
    static constexpr Control kIconFile{StandFrame, 3990, 1755};
    static constexpr Control kLeft{StandFrame, 7500, 1760};
    static constexpr Control kTop{StandFrame, 9150, 1760};
    static constexpr Control kEnabled{StandFrame, 11880, 670};
    static constexpr Control kDescription{StandFrame, 13000, 2000};
    static constexpr Bar kStandBar{StandFrame, 90, 2085, 11460, 4};
    /// Number of locations of a shelf.
    static constexpr Control countOfShelf(int shelf) { return {StandFrame, 2590 + shelf * 1860, 1055}; }

    static constexpr Control kMaterial{LocationFrame, 5300, 950};
    static constexpr Control kLookFor{LocationFrame, 8385, 950};
    static constexpr Control kGroupOfLocation{LocationFrame, 5300, 1370};
    static constexpr Control kParam{LocationFrame, 10200, 1175};
    static constexpr Control kParamValue{LocationFrame, 9200, 1595};
    static constexpr Control kPictureFile{LocationFrame, 14490, 2115};
    static constexpr Bar kLocationBar{LocationFrame, 3030, 1845, 2490, 2};
    static constexpr Bar kParamBar{LocationFrame, 8760, 1845, 3060, 1};

    static constexpr Control kGroup{GroupFrame, 4000, 350};
    static constexpr Control kGroupName{GroupFrame, 11000, 350};
    static constexpr Control kMaterials{GroupFrame, 1500, 1600};
    static constexpr Control kMembers{GroupFrame, 9800, 1600};
    static constexpr Control kAddMember{GroupFrame, 7785, 2355};
    static constexpr Control kRemoveMember{GroupFrame, 7785, 3015};
    static constexpr Bar kGroupBar{GroupFrame, 90, 5085, 14790, 3};

    LayoutDesk() = default;
    void SetUp() override;

    /// Opens the editor by the keys of the menu and waits for its plan.
    void openEditor();
    /// Clicks a button, 1 to 5, of the strip above the plan.
    void pressInStrip(int button) const;
    /// Moves the frames up, so that the lower part of the hall is free, and down again.
    void moveFramesUp();
    void moveFramesDown();
    void openGroups();

    QPoint at(const Control& control) const;
    void click(const Control& control) const { display.click(at(control)); }
    void clickLocation(int rank, int stand, int shelf, int location) const;
    void clickStand(int rank, int stand) const;
    void press(const Bar& bar, int button) const;
    /// Picks a row of a drop-down list, counted from 0, and its last one.
    void choose(const Control& list, int row) const;
    void chooseLast(const Control& list) const;
    /// Types over what is in a box.
    void enter(const Control& box, const QString& text) const;
    /// Marks a row, counted from 0, of a list view.
    void mark(const Control& list, int row) const;
    /// Names a file in the dialog that a button opens.
    void pickFile(const Control& button, const QString& name);
    /// Looks for a material by its code in the search dialog and takes it.
    void lookFor(const QString& code);

    /// Copies the text of an open message, as a person does who asks for help about it.
    void copyMessage(const QString& title);
    /// Pastes what was copied into the search dialog, whose every text the server's trace shows, and cancels.
    void pasteIntoSearch(const QString& expected);

    /// Waits until a query finds these rows and no others.
    void expectRows(const QString& sql, const QStringList& expected) const;
    void expectStands(const QStringList& expected) const;
    void expectLocations(const QStringList& expected) const;
    /// Waits until every stand and every location of the database stands on the plan with its picture.
    void expectOnPlan(int rank) const;
    /// Number of a row in what a list shows of a query, by the value of the first column.
    int rowOf(const QString& sql, const QString& key) const;
    /// Waits for a call of a procedure in the server's trace.
    bool called(const QString& procedure) const;
    QList<LocalWarehouse::TraceEntry> calls(const QString& procedure) const;

    static const QString& messageTitle();

private:
    QPoint findFrame(int height, const std::function<bool(int top)>& wanted) const;
    void restHand() const;
    void openSearch(QString& window);

    /// Corners of the frames on the plan, twips.
    std::array<QPoint, 3> m_corners;
};

}  // namespace regalon::test
