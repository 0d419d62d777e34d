#include "host/window/mnemonics.h"

#include <QAbstractButton>
#include <QLabel>
#include <QVariant>

#include <algorithm>
#include <vector>

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

constexpr const char* kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";

// The letters that the text can have, in capitals, the best first: its own in their order, or any where it has no Latin
// ones.
QString lettersFor(const QString& text, const QString& preferred) {
    const bool isLatin = std::ranges::any_of(text, isPlainLetter);
    QString letters;
    for (const QChar c : isLatin ? text : preferred + QLatin1String(kAlphabet))
        if (isPlainLetter(c) && !letters.contains(c.toUpper()))
            letters += c.toUpper();
    return letters;
}

// The text with this letter of it marked, or with the letter in brackets before a colon and blanks that end it.
QString withLetter(const QString& text, QChar letter) {
    const qsizetype place = text.indexOf(letter, 0, Qt::CaseInsensitive);
    if (place >= 0)
        return textWithoutMnemonic(text.left(place)) + u'&' + textWithoutMnemonic(text.mid(place));
    qsizetype end = text.size();
    while (end > 0 && (text[end - 1].isSpace() || QStringView(u":：…").contains(text[end - 1])))
        --end;
    return textWithoutMnemonic(text.left(end)) + QStringLiteral("(&%1)").arg(letter) +
           textWithoutMnemonic(text.mid(end));
}

struct Captioned {
    QWidget* widget;
    QString text;
    QString letters; // in capitals, the best first
    QChar letter;    // the one that it has; null: none
};

// Gives a letter to one of all: a free one, or that of another which can have another instead.
bool giveLetter(Captioned& one, std::vector<Captioned>& all, QString& tried) {
    for (const QChar letter : one.letters) {
        if (tried.contains(letter))
            continue;
        tried += letter;
        const auto owner = std::ranges::find(all, letter, &Captioned::letter);
        if (owner == all.end() || giveLetter(*owner, all, tried)) {
            one.letter = letter;
            return true;
        }
    }
    return false;
}

} // namespace

QString textWithoutMnemonic(const QString& text) {
    return QString(text).replace(u'&', QStringLiteral("&&"));
}

void setCaption(QWidget& widget, const QString& text) {
    if (widget.accessibleName().isEmpty() || widget.accessibleName() == caption(widget))
        widget.setAccessibleName(text);
    widget.setProperty(kCaption, text);
    const auto* label = qobject_cast<QLabel*>(&widget);
    show(widget, label != nullptr && label->buddy() == nullptr ? text : textWithoutMnemonic(text));
}

QString caption(const QWidget& widget) {
    return widget.property(kCaption).toString();
}

QString textWithMnemonic(const QString& text, QString& taken, const QString& preferred) {
    for (const QChar letter : lettersFor(text, preferred))
        if (!taken.contains(letter)) {
            taken += letter;
            return withLetter(text, letter);
        }
    return textWithoutMnemonic(text);
}

void setTextWithMnemonic(QAbstractButton& button, const QString& text, QString& taken, const QString& preferred) {
    button.setText(textWithMnemonic(text, taken, preferred));
    button.setAccessibleName(text);
}

void assignMnemonics(QWidget& page, const QString& taken) {
    std::vector<Captioned> all;
    for (QWidget* widget : page.findChildren<QWidget*>()) {
        const QString text = caption(*widget);
        const bool hidden = widget->testAttribute(Qt::WA_WState_ExplicitShowHide) && widget->isHidden();
        if (text.isEmpty() || hidden)
            continue;
        const auto* label = qobject_cast<QLabel*>(widget);
        if (label != nullptr ? label->buddy() != nullptr : qobject_cast<QAbstractButton*>(widget) != nullptr)
            all.push_back({.widget = widget, .text = text, .letters = lettersFor(text, {}), .letter = {}});
    }
    for (Captioned& each : all) {
        QString tried = taken;
        giveLetter(each, all, tried);
    }
    for (const Captioned& each : all)
        show(*each.widget, each.letter.isNull() ? textWithoutMnemonic(each.text) : withLetter(each.text, each.letter));
}

} // namespace host
