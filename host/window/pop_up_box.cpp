#include "host/window/pop_up_box.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QMouseEvent>
#include <QStyleOptionComboBox>

#include <algorithm>
#include <cmath>
#include <utility>

namespace host {
namespace {

// A click on a disabled row of a list commits nothing.
class DisabledRows : public QObject {
public:
    explicit DisabledRows(QAbstractItemView& view) : QObject(&view), view_(view) {
        view_.viewport()->installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::MouseButtonRelease && event->type() != QEvent::MouseButtonPress)
            return false;
        const QModelIndex index = view_.indexAt(static_cast<QMouseEvent*>(event)->position().toPoint());
        return index.isValid() && (index.flags() & Qt::ItemIsEnabled) == 0;
    }

private:
    QAbstractItemView& view_;
};

} // namespace

// With the policy AdjustToContents Qt makes the list that pops up at once, and again measures all items for the least
// size; with the default one its hints stay what they were as the items change. So the size is found here.
PopUpBox::PopUpBox(QWidget* parent) : QComboBox(parent) {
    const auto forget = [this] { forgetSize(); };
    connect(model(), &QAbstractItemModel::rowsInserted, this, forget);
    connect(model(), &QAbstractItemModel::rowsRemoved, this, forget);
    connect(model(), &QAbstractItemModel::dataChanged, this, forget);
    connect(model(), &QAbstractItemModel::modelReset, this, forget);
}

QSize PopUpBox::sizeHint() const {
    if (size_.isValid())
        return size_;
    constexpr int kBesideIcon = 4; // pixels
    constexpr int kEmpty = 7;      // letters that an empty list has room for
    constexpr int kLeastLine = 14, kAroundLine = 2;
    const QFontMetrics metrics = fontMetrics();
    int width = count() == 0 ? kEmpty * metrics.horizontalAdvance(u'x') : 0;
    int height = std::max(static_cast<int>(std::ceil(QFontMetricsF(metrics).height())), kLeastLine) + kAroundLine;
    for (int index = 0; index < count(); ++index) {
        int item = widthOfText(itemText(index));
        if (!itemIcon(index).isNull()) {
            item += iconSize().width() + kBesideIcon;
            height = std::max(height, iconSize().height() + kAroundLine);
        }
        width = std::max(width, item);
    }
    QStyleOptionComboBox option;
    initStyleOption(&option);
    size_ = style()->sizeFromContents(QStyle::CT_ComboBox, &option, QSize(width, height), this);
    return size_;
}

int PopUpBox::widthOfText(const QString& text) const {
    if (other_ != nullptr)
        if (const auto known = other_->widths_.constFind(text); known != other_->widths_.cend())
            return *known;
    return widths_[text] = fontMetrics().boundingRect(text).width();
}

void PopUpBox::showPopup() {
    if (!std::exchange(hasPoppedUp_, true))
        new DisabledRows(*view());
    QComboBox::showPopup();
}

void PopUpBox::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        forgetSize();
    QComboBox::changeEvent(event);
}

void PopUpBox::forgetSize() {
    if (!size_.isValid())
        return; // nobody has asked for it: a list is being filled
    size_ = {};
    widths_.clear();
    updateGeometry();
}

} // namespace host
