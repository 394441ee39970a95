// Lists and tabs on their widgets, and the pointer on labels and frames: Wire and Bring for them.
#pragma once

#include "toolkit/controls.h"

#include <functional>

class QComboBox;
class QFrame;
class QLabel;
class QListWidget;
class QTabBar;
class QWidget;

namespace vael {

// `again` shows the record after an act of the user, so that a widget which changed itself is right
// again. Bring is called with the widget's signals blocked.

void Wire(ListBox& record, QComboBox& widget, const std::function<void()>& again);
void Bring(const ListBox& record, QComboBox& widget);

void Wire(ListBox& record, QListWidget& widget, const std::function<void()>& again);
void Bring(const ListBox& record, QListWidget& widget);

void Wire(Tabs& record, QTabBar& widget, const std::function<void()>& again);
void Bring(const Tabs& record, QTabBar& widget);

/// Carries the mouse to a label or a frame, where the record has a handler for it; other mouse acts
/// go their usual way.
void CarryMouse(Label& record, QLabel& widget);
void CarryMouse(Frame& record, QFrame& widget);

}  // namespace vael
