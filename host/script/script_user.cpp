#include "host/script/script_user.h"

#include "toolkit/button.h"
#include "toolkit/number_field.h"
#include "toolkit/popup_list.h"
#include "toolkit/radio_matrix.h"
#include "toolkit/table_view.h"

namespace host {

bool ScriptUser::showPanel(Session& session, CVPrintQualityPDE& panel) {
    return session.showPanel(panel);
}

void ScriptUser::pickItem(toolkit::PopUpList& list, int index) {
    list.userSelectedItemAtIndex(index);
}

void ScriptUser::pickRow(toolkit::RadioMatrix& matrix, int row) {
    matrix.userSelectedRow(row);
}

void ScriptUser::pickEntry(toolkit::TableView& table, int index) {
    table.userSelectedEntry(index);
}

void ScriptUser::setOn(toolkit::CheckBox& box, bool on) {
    box.userSetOn(on);
}

void ScriptUser::press(toolkit::PushButton& button) {
    button.userPressed();
}

void ScriptUser::enter(toolkit::NumberField& field, double value) {
    field.userSetValue(value);
}

toolkit::AlertAnswer ScriptUser::answerAlert(const toolkit::Alert&, bool, const toolkit::AlertAnswer& wanted) {
    return wanted;
}

void ScriptUser::answerWindow(toolkit::Window&, const WindowAnswer& wanted) {
    if (wanted.suppressionButton != nullptr)
        wanted.suppressionButton->userSetOn(wanted.suppressionButtonOn);
    if (wanted.button != nullptr)
        wanted.button->userPressed();
}

} // namespace host
