#include "host/window/preset_menu.h"

#include "host/window/mnemonics.h"

#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>
#include <unistd.h>

namespace host {
namespace {

// Root's presets are everyone's.
PresetOwner ownOwner() {
    return ::geteuid() == 0 ? PresetOwner::Everyone : PresetOwner::User;
}

// Names are told apart as the files' readers do: whatever the case of their Latin letters.
std::vector<Preset>::const_iterator presetNamed(const std::vector<Preset>& presets, const std::string& name) {
    return std::ranges::find_if(presets, [&](const Preset& each) {
        return QByteArray::fromStdString(each.name.name).compare(name.c_str(), Qt::CaseInsensitive) == 0;
    });
}

QString refusalInWords(const std::string& name, const Language& language) {
    if (refusalForPresetName(name).empty())
        return {};
    return windowText(name.empty() ? Text::PresetNeedsName : Text::BadPresetName, language);
}

// What is asked before a preset is kept, renamed or deleted.
struct Question {
    Text action;                   // the title, and the button that does it
    QString note{};                // what is to be known before; mostly empty
    std::vector<Preset> presets{}; // which of them; empty: none of these
    bool asksName = true;
    /// Does it, by the place of the preset and the name. The sentence says why it was not done, and is empty where the
    /// user took the answer back; nullopt: it was done.
    std::function<std::optional<QString>(QWidget& asking, std::size_t preset, const std::string& name)> answer;
};

// Asks until it was done or given up, so that nothing typed is lost.
void ask(QWidget& window, const Language& language, const Question& question) {
    QDialog dialog(&window);
    dialog.setObjectName("presetQuestion");
    const QString action = windowText(question.action, language);
    dialog.setWindowTitle(action);
    auto* form = new QFormLayout(&dialog);
    const auto addText = [&](const QString& text) {
        auto* label = new QLabel(text);
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        form->addRow(label);
        return label;
    };
    QString taken;
    const auto addField = [&](Text caption, QWidget& field, const char* name) {
        const QString text = windowText(caption, language);
        field.setObjectName(name);
        field.setAccessibleName(text);
        auto* label = new QLabel(textWithMnemonic(windowText(Text::Caption, language).arg(text), taken));
        label->setAccessibleName(text);
        label->setBuddy(&field);
        form->addRow(label, &field);
    };
    if (!question.note.isEmpty())
        addText(question.note);
    QComboBox list;
    QLineEdit name;
    if (!question.presets.empty()) {
        for (const Preset& preset : question.presets)
            list.addItem(QString::fromUtf8(preset.name.name));
        addField(Text::Preset, list, "presetList");
    }
    if (question.asksName) {
        addField(question.presets.empty() ? Text::PresetName : Text::NewPresetName, name, "presetNameField");
        name.setMinimumWidth(name.fontMetrics().averageCharWidth() * 30);
        if (question.presets.empty())
            name.setFocus();
    }
    QLabel* refusal = addText({});
    refusal->setObjectName("presetRefusal");
    refusal->hide();
    auto* buttons = new QDialogButtonBox;
    auto* does = buttons->addButton(QString(), QDialogButtonBox::AcceptRole);
    setTextWithMnemonic(*does, action, taken);
    does->setObjectName("presetActionButton");
    does->setDefault(true);
    auto* cancel = buttons->addButton(QString(), QDialogButtonBox::RejectRole);
    setTextWithMnemonic(*cancel, windowText(Text::Cancel, language), taken);
    cancel->setObjectName("presetCancelButton");
    form->addRow(buttons);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, [&] {
        const auto why = question.answer(dialog, static_cast<std::size_t>(std::max(0, list.currentIndex())),
                                         name.text().trimmed().toStdString());
        if (!why) {
            dialog.accept();
            return;
        }
        refusal->setText(*why);
        refusal->setVisible(!why->isEmpty());
        does->setAccessibleDescription(*why);
        dialog.adjustSize();
    });
    dialog.exec();
}

bool wantsToReplace(QWidget& asking, const std::string& name, const Language& language) {
    QMessageBox box(QMessageBox::Question, windowText(Text::SavePreset, language),
                    windowText(Text::ReplacePreset, language).arg(QString::fromUtf8(name)), QMessageBox::NoButton,
                    &asking);
    box.setObjectName("replaceQuestion");
    box.setTextFormat(Qt::PlainText);
    QString taken;
    auto* replace = box.addButton(QString(), QMessageBox::AcceptRole);
    setTextWithMnemonic(*replace, windowText(Text::Replace, language), taken);
    replace->setObjectName("replaceButton");
    auto* cancel = box.addButton(QString(), QMessageBox::RejectRole);
    setTextWithMnemonic(*cancel, windowText(Text::Cancel, language), taken);
    cancel->setObjectName("keepButton");
    box.setDefaultButton(cancel);
    box.setEscapeButton(cancel);
    box.exec();
    return box.clickedButton() == replace;
}

} // namespace

PresetMenu::PresetMenu(Language language, Window window) : language_(std::move(language)), window_(std::move(window)) {
    setObjectName("presetsButton");
    setAutoDefault(false);
    setCaption(*this, windowText(Text::Presets, language_));
    setAccessibleName(windowText(Text::Presets, language_));
    auto* presets = new QMenu(this);
    presets->setObjectName("presetsMenu");
    connect(presets, &QMenu::aboutToShow, this, [this] { fill(); });
    setMenu(presets);
    setQueue({});
}

void PresetMenu::setQueue(const std::string& queue) {
    queue_ = queue;
    menu()->close();
    setEnabled(!queue.empty());
    const QString why = queue.empty() ? windowText(Text::PresetsNeedQueue, language_) : QString();
    setToolTip(why);
    setAccessibleDescription(why);
}

void PresetMenu::fill() {
    menu()->clear();
    const PresetList list = listPresets(queue_);
    if (!list.error.empty())
        window_.tell(QString::fromUtf8(list.error));
    const auto title = [&](Text text, QString& taken) {
        return textWithMnemonic(windowText(Text::AsksFirst, language_).arg(windowText(text, language_)), taken);
    };
    QString taken;
    const QString save = title(Text::SavePreset, taken); // these keep their letters whatever the presets' names are
    const QString rename = title(Text::RenamePreset, taken);
    const QString remove = title(Text::DeletePreset, taken);
    for (const Preset& preset : list.presets)
        menu()->addAction(textWithMnemonic(QString::fromUtf8(preset.name.name), taken),
                          [this, preset] { window_.apply(preset); });
    if (list.presets.empty())
        menu()->addAction(textWithoutMnemonic(windowText(Text::NoPresets, language_)))->setEnabled(false);
    menu()->addSeparator();
    menu()->addAction(save, [this] { this->save(); })->setObjectName("savePresetAction");
    for (QAction* action : {menu()->addAction(rename, [this] { this->rename(); }),
                            menu()->addAction(remove, [this] { this->remove(); })}) {
        action->setEnabled(!list.presets.empty());
        action->setObjectName(menu()->actions().indexOf(action) == menu()->actions().size() - 1 ? "deletePresetAction"
                                                                                                : "renamePresetAction");
    }
}

// The choices are those of the moment, whatever goes on while the name is asked for.
void PresetMenu::save() {
    const auto choices = window_.choices();
    if (!choices)
        return;
    const PresetName kept{.queue = queue_, .name = {}, .owner = ownOwner()};
    const QString note =
        kept.owner == PresetOwner::Everyone ? windowText(Text::PresetForEveryone, language_) : QString();
    ask(*window(), language_,
        {.action = Text::SavePreset,
         .note = note,
         .answer = [&](QWidget& asking, std::size_t, const std::string& name) -> std::optional<QString> {
             if (const QString refusal = refusalInWords(name, language_); !refusal.isEmpty())
                 return refusal;
             const PresetList list = listPresets(kept.queue);
             if (presetNamed(list.presets, name) != list.presets.end() && !wantsToReplace(asking, name, language_))
                 return QString();
             const std::string failure = savePreset({.queue = kept.queue, .name = name, .owner = kept.owner}, *choices);
             if (!failure.empty())
                 return QString::fromUtf8(failure);
             window_.tell(windowText(Text::PresetSaved, language_).arg(QString::fromUtf8(name)));
             return std::nullopt;
         }});
}

void PresetMenu::rename() {
    const std::vector<Preset> presets = listPresets(queue_).presets;
    if (presets.empty())
        return;
    ask(*window(), language_,
        {.action = Text::RenamePreset,
         .presets = presets,
         .answer = [&](QWidget&, std::size_t index, const std::string& name) -> std::optional<QString> {
             const Preset& preset = presets[index];
             if (const QString refusal = refusalInWords(name, language_); !refusal.isEmpty())
                 return refusal;
             const auto other = presetNamed(presets, name);
             if (other != presets.end() && &*other != &preset)
                 return windowText(Text::PresetExists, language_).arg(QString::fromUtf8(name));
             if (const std::string failure = renamePreset(preset.name, name); !failure.empty())
                 return QString::fromUtf8(failure);
             window_.tell(windowText(Text::PresetRenamed, language_)
                              .arg(QString::fromUtf8(preset.name.name), QString::fromUtf8(name)));
             return std::nullopt;
         }});
}

void PresetMenu::remove() {
    const std::vector<Preset> presets = listPresets(queue_).presets;
    if (presets.empty())
        return;
    ask(*window(), language_,
        {.action = Text::DeletePreset,
         .note = windowText(Text::DeletedForGood, language_),
         .presets = presets,
         .asksName = false,
         .answer = [&](QWidget&, std::size_t index, const std::string&) -> std::optional<QString> {
             if (const std::string failure = deletePreset(presets[index].name); !failure.empty())
                 return QString::fromUtf8(failure);
             window_.tell(windowText(Text::PresetDeleted, language_).arg(QString::fromUtf8(presets[index].name.name)));
             return std::nullopt;
         }});
}

} // namespace host
