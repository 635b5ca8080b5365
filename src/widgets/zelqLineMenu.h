#pragma once

class QPoint;
class zelqLineView;

/// The context menu of the lines of expanded data: Copy, Select All, Go to Record, and the actions
/// that were added to the view.
namespace zelqLineMenu {

/// Shows the menu at a place on the screen. It is closed when lines come or go.
void popUp(zelqLineView& view, const QPoint& where);

}  // namespace zelqLineMenu
