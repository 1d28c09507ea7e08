#pragma once

class QPainter;

namespace regalon::artwork {

/// Pictures beside the plan: rows of lists, toolbars, pointers, doors, cursor. Painter as in Looks.h; 16 by
/// 16 pixels at 1x unless the name says otherwise.

void drawRowReady(QPainter& painter);
void drawRowPartly(QPainter& painter);
void drawRowConfirmed(QPainter& painter);
void drawRowPending(QPainter& painter);
void drawRowClosed(QPainter& painter);
void drawBack(QPainter& painter);
void drawRowOther(QPainter& painter);
void drawRowAssigned(QPainter& painter);
void drawRowStock(QPainter& painter);
void drawSortMark(QPainter& painter);
void drawSearchMark(QPainter& painter);

void drawPointerUp(QPainter& painter);
void drawPointerDown(QPainter& painter);

void drawExit(QPainter& painter);
void drawRefresh(QPainter& painter);
void drawClock(QPainter& painter);
void drawLens(QPainter& painter);
void drawList(QPainter& painter);
void drawClose(QPainter& painter);
void drawSave(QPainter& painter);
void drawFolder(QPainter& painter);
void drawLabelPrint(QPainter& painter);
void drawCartons(QPainter& painter);
void drawToRight(QPainter& painter);
void drawToLeft(QPainter& painter);

/// 32 by 32 pixels at 1x.
void drawEntranceDoor(QPainter& painter);
void drawGate(QPainter& painter);
void drawBusyPointer(QPainter& painter);
void drawProgram(QPainter& painter);

}  // namespace regalon::artwork
