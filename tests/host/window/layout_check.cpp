#include "layout_check.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QSlider>
#include <QTabBar>
#include <QTest>

namespace tests {
namespace {

bool isControl(const QWidget& widget) {
    if (const auto* label = qobject_cast<const QLabel*>(&widget))
        return !label->text().isEmpty() || !label->pixmap(Qt::ReturnByValue).isNull();
    return qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
           qobject_cast<const QComboBox*>(&widget) != nullptr ||
           qobject_cast<const QAbstractSpinBox*>(&widget) != nullptr ||
           qobject_cast<const QLineEdit*>(&widget) != nullptr || qobject_cast<const QSlider*>(&widget) != nullptr ||
           qobject_cast<const QListView*>(&widget) != nullptr || qobject_cast<const QTabBar*>(&widget) != nullptr;
}

// What is visible, without the parts of a control.
QList<const QWidget*> controlsOf(const QWidget& parent) {
    QList<const QWidget*> controls;
    for (const QObject* child : parent.children()) {
        const auto* widget = qobject_cast<const QWidget*>(child);
        if (widget == nullptr || !widget->isVisible() || widget->isWindow())
            continue;
        if (isControl(*widget))
            controls << widget;
        else
            controls << controlsOf(*widget);
    }
    return controls;
}

QSize neededSize(const QWidget& widget) {
    if (const auto* label = qobject_cast<const QLabel*>(&widget); label != nullptr && label->wordWrap())
        return {widget.width(), widget.heightForWidth(widget.width())};
    if (const auto* list = qobject_cast<const QListView*>(&widget))
        return {list->sizeHintForColumn(0) + widget.width() - list->viewport()->width(), 0};
    if (qobject_cast<const QLineEdit*>(&widget) != nullptr || qobject_cast<const QSlider*>(&widget) != nullptr)
        return widget.minimumSizeHint();
    return widget.sizeHint();
}

QString nameOf(const QWidget& widget) {
    const auto* label = qobject_cast<const QLabel*>(&widget);
    const auto* button = qobject_cast<const QAbstractButton*>(&widget);
    const QString name =
        widget.objectName().isEmpty() ? QString::fromLatin1(widget.metaObject()->className()) : widget.objectName();
    return name + u' ' + (label != nullptr ? label->text() : button != nullptr ? button->text() : QString());
}

} // namespace

QStringList whatIsCut(const QWidget& window) {
    QStringList cut;
    for (const QWidget* widget : controlsOf(window)) {
        const QSize needed = neededSize(*widget);
        if (needed.width() > widget->width() || needed.height() > widget->height())
            cut << QStringLiteral("%1 needs %2x%3, has %4x%5.")
                       .arg(nameOf(*widget))
                       .arg(needed.width())
                       .arg(needed.height())
                       .arg(widget->width())
                       .arg(widget->height());
        const QRect place(widget->mapTo(&window, QPoint()), widget->size());
        if (!window.rect().contains(place))
            cut << QStringLiteral("%1 lies outside the window.").arg(nameOf(*widget));
    }
    return cut;
}

QStringList whatOverlaps(const QWidget& window) {
    QStringList overlaps;
    const auto controls = controlsOf(window);
    for (const QWidget* one : controls)
        for (const QWidget* other : controls) {
            const QRect place(one->mapTo(&window, QPoint()), one->size());
            if (one < other && place.intersects(QRect(other->mapTo(&window, QPoint()), other->size())))
                overlaps << QStringLiteral("%1 lies over %2.").arg(nameOf(*one), nameOf(*other));
        }
    return overlaps;
}

QStringList faultsOfLayout(const QWidget& window) {
    constexpr int kEnough = 3; // looks in a row that find no fault and the same size: events bring others along
    QStringList faults;
    int settled = 0;
    (void)QTest::qWaitFor([&] {
        const QSize before = window.size();
        QCoreApplication::processEvents();
        faults = whatIsCut(window) + whatOverlaps(window);
        settled = faults.isEmpty() && window.size() == before ? settled + 1 : 0;
        return settled == kEnough;
    });
    return faults;
}

} // namespace tests
