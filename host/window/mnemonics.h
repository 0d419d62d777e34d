#pragma once

#include <QString>

class QAbstractButton;
class QWidget;

namespace host {

/// Sets a widget's text (a label, a button or a tab's title), shown as it stands: no character of it is markup.
/// assignMnemonics() adds the mnemonic. A widget without another accessible name is called by the text alone.
void setCaption(QWidget& widget, const QString& text);
/// The text that setCaption() set last; empty where it set none.
QString caption(const QWidget& widget);

/// The text as a widget shows it that takes "&" for a mnemonic: with a letter that is not among those taken, which it
/// joins. Without one where none is left. Texts without Latin letters get one in brackets, of the preferred text if it
/// has one that is free.
QString textWithMnemonic(const QString& text, QString& taken, const QString& preferred = {});
/// Shows it on a button, which assistive technology calls by the text alone.
void setTextWithMnemonic(QAbstractButton& button, const QString& text, QString& taken, const QString& preferred = {});
/// The same text without any mnemonic.
QString textWithoutMnemonic(const QString& text);

/// Gives each labelled control and each button on the page a letter of its own, other than those taken; as many as
/// there are letters for.
void assignMnemonics(QWidget& page, const QString& taken);

} // namespace host
