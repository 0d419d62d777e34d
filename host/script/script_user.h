#pragma once

#include "host/session/session.h"

namespace toolkit {
class CheckBox;
class NumberField;
class PopUpList;
class PushButton;
class RadioMatrix;
class TableView;
} // namespace toolkit

namespace host {

/// Uses the controls and answers the alerts of one dialog, as its script says. This one sees no window: it does to the
/// models what a widget would do. A front end with a window overrides it.
class ScriptUser {
public:
    /// How a panel's own alert window is answered.
    struct WindowAnswer {
        toolkit::PushButton* button = nullptr;          ///< null where the window has none
        toolkit::CheckBox* suppressionButton = nullptr; ///< null: the box stays as it stands
        bool suppressionButtonOn = false;
    };

    virtual ~ScriptUser() = default;

    virtual void sessionDidOpen(Session&) {}
    /// The panels end next.
    virtual void sessionWillEnd() {}

    /// See Session::showPanel().
    virtual bool showPanel(Session& session, CVPrintQualityPDE& panel);

    // A control that is visible and enabled. What its action raises passes through.

    virtual void pickItem(toolkit::PopUpList& list, int index);
    virtual void pickRow(toolkit::RadioMatrix& matrix, int row);
    virtual void pickEntry(toolkit::TableView& table, int index);
    virtual void setOn(toolkit::CheckBox& box, bool on);
    virtual void press(toolkit::PushButton& button);
    virtual void enter(toolkit::NumberField& field, double value);

    // Alerts.

    virtual toolkit::AlertAnswer answerAlert(const toolkit::Alert& alert, bool asSheet,
                                             const toolkit::AlertAnswer& wanted);
    virtual void answerPanel(const toolkit::AlertPanel&) {}
    virtual void answerWindow(toolkit::Window& window, const WindowAnswer& wanted);
};

} // namespace host
