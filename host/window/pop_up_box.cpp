#include "host/window/pop_up_box.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QHash>
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

// The widths of a font's letters, one by one.
class LetterWidths {
public:
    explicit LetterWidths(const QFontMetrics& metrics) : metrics_(metrics), margin_(metrics.height()) {}

    // Whether the text may be wider than so many pixels. Side by side, letters are not much wider than one by one: some
    // pixels, where the first or the last stands out, or two keep apart.
    bool mayBeWider(const QString& text, int width) {
        int sum = margin_;
        for (const char32_t letter : text.toUcs4()) {
            auto known = widths_.constFind(letter);
            if (known == widths_.cend())
                known = widths_.insert(letter, metrics_.horizontalAdvance(QString::fromUcs4(&letter, 1)));
            sum += *known;
        }
        return sum > width;
    }

private:
    const QFontMetrics& metrics_;
    int margin_;
    QHash<char32_t, int> widths_;
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
    if (!size_.isValid() || iconsSize_ != iconSize()) { // nothing tells of a new size of pictures
        iconsSize_ = iconSize();
        QStyleOptionComboBox option;
        initStyleOption(&option);
        size_ = style()->sizeFromContents(QStyle::CT_ComboBox, &option, largestItem(), this);
    }
    return size_;
}

// Some printers have hundreds of papers, and to measure a text takes a hundred times as long as to add up its letters.
QSize PopUpBox::largestItem() const {
    constexpr int kBesideIcon = 4; // pixels
    constexpr int kEmpty = 7;      // letters that an empty list has room for
    constexpr int kLeastLine = 14, kAroundLine = 2;
    const QFontMetrics metrics = fontMetrics();
    LetterWidths letters(metrics);
    int width = count() == 0 ? kEmpty * metrics.horizontalAdvance(u'x') : 0;
    int height = std::max(static_cast<int>(std::ceil(QFontMetricsF(metrics).height())), kLeastLine) + kAroundLine;
    for (int index = 0; index < count(); ++index) {
        int beside = 0;
        if (!itemIcon(index).isNull()) {
            beside = iconSize().width() + kBesideIcon;
            height = std::max(height, iconSize().height() + kAroundLine);
        }
        const QString text = itemText(index);
        if (letters.mayBeWider(text, width - beside))
            width = std::max(width, beside + metrics.boundingRect(text).width());
    }
    return {width, height};
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
    updateGeometry();
}

} // namespace host
