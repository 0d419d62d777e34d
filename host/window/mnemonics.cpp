#include "host/window/mnemonics.h"

#include <QAbstractButton>
#include <QLabel>
#include <QVariant>

namespace host {
namespace {

constexpr const char* kCaption = "caption"; // a dynamic property

void show(QWidget& widget, const QString& text) {
    if (auto* label = qobject_cast<QLabel*>(&widget))
        label->setText(text);
    else if (auto* button = qobject_cast<QAbstractButton*>(&widget))
        button->setText(text);
}

bool isPlainLetter(QChar c) {
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}

} // namespace

QString textWithoutMnemonic(const QString& text) {
    return QString(text).replace(u'&', QStringLiteral("&&"));
}

void setCaption(QWidget& widget, const QString& text) {
    widget.setProperty(kCaption, text);
    const auto* label = qobject_cast<QLabel*>(&widget);
    show(widget, label != nullptr && label->buddy() == nullptr ? text : textWithoutMnemonic(text));
}

QString caption(const QWidget& widget) {
    return widget.property(kCaption).toString();
}

QString textWithMnemonic(const QString& text, QString& taken, const QString& preferred) {
    bool latin = false;
    for (int place = 0; place < text.size(); ++place) {
        if (!isPlainLetter(text[place]))
            continue;
        latin = true;
        const QChar letter = text[place].toUpper();
        if (taken.contains(letter))
            continue;
        taken += letter;
        return textWithoutMnemonic(text.left(place)) + u'&' + textWithoutMnemonic(text.mid(place));
    }
    if (latin)
        return textWithoutMnemonic(text);
    for (const QChar each : preferred + QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZ")) {
        const QChar letter = each.toUpper();
        if (!isPlainLetter(letter) || taken.contains(letter))
            continue;
        taken += letter;
        qsizetype end = text.size(); // before a colon and blanks that end it
        while (end > 0 && (text[end - 1].isSpace() || QStringView(u":：…").contains(text[end - 1])))
            --end;
        return textWithoutMnemonic(text.left(end)) + QStringLiteral("(&%1)").arg(letter) +
               textWithoutMnemonic(text.mid(end));
    }
    return textWithoutMnemonic(text);
}

void assignMnemonics(QWidget& page, QString taken) {
    for (QWidget* widget : page.findChildren<QWidget*>()) {
        const QString text = caption(*widget);
        const bool hidden = widget->testAttribute(Qt::WA_WState_ExplicitShowHide) && widget->isHidden();
        if (text.isEmpty() || hidden)
            continue;
        const auto* label = qobject_cast<QLabel*>(widget);
        if (label != nullptr ? label->buddy() != nullptr : qobject_cast<QAbstractButton*>(widget) != nullptr)
            show(*widget, textWithMnemonic(text, taken));
    }
}

} // namespace host
