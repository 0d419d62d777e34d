// The dialog's window: its pages, its session and what goes on between them.

#include "host/window/print_dialog.h"

#include "framework/option_keywords.h"
#include "host/jobs/job_text.h"
#include "host/session/panel_choices.h"
#include "host/session/program_files.h"
#include "host/window/document_view.h"
#include "host/window/job_words.h"
#include "host/window/mnemonics.h"
#include "host/window/page_ranges.h"

#include <QAccessible>
#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QResizeEvent>
#include <QScreen>
#include <QShortcut>
#include <QStackedWidget>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <system_error>
#include <thread>

namespace host {
namespace {

// Every language has the letters of the English text, where they are free.
void setTitle(QAbstractButton& button, Text text, const Language& language, QString& taken) {
    setTextWithMnemonic(button, windowText(text, language), taken, windowText(text, Language::English));
}

// As high as the page in front needs it, whatever texts wrap on the others.
class PageTabs : public QTabWidget {
public:
    using QTabWidget::QTabWidget;
    [[nodiscard]] bool hasHeightForWidth() const override { return false; }
    [[nodiscard]] QSize sizeHint() const override {
        QSize hint = QTabWidget::sizeHint();
        if (const QWidget* page = currentWidget()) // the least height counts no page but this one: fit() sees to it
            hint.setHeight(minimumSizeHint().height() - page->minimumSizeHint().height() + page->sizeHint().height());
        return hint;
    }
};

// Qt reads the system's fonts when the first text is measured, which takes half of a small window's start. Where there
// can be no thread, that is when they are read.
std::jthread readFonts() {
    try {
        return std::jthread([] { QFontDatabase::hasFamily(QString()); });
    } catch (const std::system_error&) {
        return {};
    }
}

} // namespace

PrintDialog::PrintDialog(DialogRequest request, Settings settings)
    : request_(std::move(request)), given_{.priority = request_.priority, .holdUntil = request_.holdUntil},
      settings_(std::move(settings)), language_(windowLanguage(settings_.languages)),
      alerts_(*this, language_,
              [this](const std::string& anchor, const std::string& book) { openHelpPage(anchor, book); }),
      actions_(language_, [this](const QString& message, bool canUndo) { tell(message, canUndo); }),
      wanted_(request_.printer.empty()
                  ? defaultOfEnvironment()
                  : NamedDefault{.variable = {}, .queue = request_.printer, .instance = request_.instance}),
      remembered_(settings_.userDefaults), passwords_(*this, language_), search_(passwords_) {
    const bool waits = settings_.looksForQueues && request_.ppd.empty();
    {
        const std::jthread fonts = readFonts();
        if (!waits && !settings_.printers.empty() && !settings_.printers.front().hasPpdOnServer())
            readAhead_ = readSessionParts(settings_.printers.front(), surroundings());
    }
    build();
    addPrinters(settings_.printers);
    endSession(); // there is none yet
    if (!waits && !printers_.empty())
        choosePrinter(0);
    else if (!waits)
        tell(windowText(Text::NoPrinter, language_));
    if (settings_.looksForQueues)
        lookForQueues();
    fit();
}

PrintDialog::~PrintDialog() {
    endSession();
}

void PrintDialog::build() {
    QStringList names;
    for (const std::string& document : request_.documents)
        names << QString::fromUtf8(documentName(document));
    const QString name = request_.title.empty() ? names.join(windowText(Text::Separator, language_))
                                                : QString::fromUtf8(plainText(request_.title, kMaximumTitleBytes));
    setWindowTitle(windowText(Text::WindowTitle, language_).arg(name));
    auto* document = new DocumentView(language_, name, request_.documents);
    QWidget* buttons = makeButtons();
    tabs_ = new PageTabs(this);
    tabs_->setObjectName("tabs");
    tabs_->setUsesScrollButtons(false);
    generalPage_ = new GeneralPage(
        language_, {.printer = [this](int index) { userChoosesPrinter(index); },
                    .paper = [this](const auto& paper, const auto& cause) { userChoosesPaper(paper, cause); },
                    .mark = [this](const auto& option, const auto& choice) { userMarks(option, choice); },
                    .colorMatching = [this](const auto& mode) { userChoosesColorMatching(mode); },
                    .scaling = [this](const auto& pageSize) { userChoosesScaling(pageSize); },
                    .remember = [this](bool remembers) { userChoosesToRemember(remembers); },
                    .pagesEdited =
                        [this] {
                            if (message() == windowText(Text::BadPages, language_))
                                tell({});
                        },
                    .sizeChanged = [this] { fitLater(); }});
    presetMenu_ = new PresetMenu(language_, {.apply = [this](const Preset& preset) { applyPreset(preset); },
                                             .choices = [this] { return choicesForPreset(); },
                                             .tell = [this](const QString& message) { tell(message); }});
    generalPage_->addBesidePrinters(*presetMenu_);
    summaryPage_ = new SummaryPage(language_, [this](const QString& message) { tell(message); });
    tabs_->addTab(generalPage_, QString());
    tabs_->addTab(summaryPage_, QString());
    QWidget* messageLine = makeMessageLine(); // whose button has a letter, too
    giveTabTitles();
    shownTab_ = 0;
    connect(tabs_, &QTabWidget::currentChanged, this, [this](int index) { showTab(index); });
    // The row of tabs knows these keys, but lists keep them from it.
    for (const auto& [keys, step] : {std::pair(QKeySequence::NextChild, 1), std::pair(QKeySequence::PreviousChild, -1)})
        connect(new QShortcut(keys, this), &QShortcut::activated, this, [this, step = step] {
            tabs_->setCurrentIndex((tabs_->currentIndex() + step + tabs_->count()) % tabs_->count());
        });

    generalPage_->setFolder(request_.folder.empty() ? QDir::homePath() + QStringLiteral("/Printed")
                                                    : QString::fromUtf8(request_.folder));
    generalPage_->setCopies(std::max(1, request_.copies));
    for (const JobOption& choice : request_.choices)
        if (choice.name == kPageRangesOption)
            generalPage_->setPages(QString::fromUtf8(choice.value));
    std::erase_if(request_.choices, [](const JobOption& choice) { return choice.name == kPageRangesOption; });

    auto* layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetNoConstraint); // fit() decides
    layout->addWidget(document);
    layout->addWidget(tabs_, 1);
    layout->addWidget(messageLine);
    layout->addWidget(buttons);
    generalPage_->focusFirst();
}

QWidget* PrintDialog::makeMessageLine() {
    messageLine_ = new QWidget(this);
    message_ = new QLabel(messageLine_);
    message_->setObjectName("messageLine");
    message_->setTextFormat(Qt::PlainText);
    message_->setWordWrap(true);
    message_->setAlignment(Qt::AlignLeading | Qt::AlignVCenter);
    undoButton_ = new QPushButton(messageLine_);
    setTitle(*undoButton_, Text::Undo, language_, takenLetters_);
    undoButton_->setObjectName("undoButton");
    undoButton_->hide(); // until there is a step
    undoButton_->setAutoDefault(false);
    connect(undoButton_, &QPushButton::clicked, this, [this] { undo(); });
    auto* layout = new QHBoxLayout(messageLine_);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(message_, 1);
    layout->addWidget(undoButton_, 0, Qt::AlignTop);
    messageLine_->hide();
    return messageLine_;
}

QWidget* PrintDialog::makeButtons() {
    auto* buttons = new QDialogButtonBox(this);
    const auto add = [&](Text text, QDialogButtonBox::ButtonRole role) {
        QPushButton* button = buttons->addButton(QString(), role);
        setTitle(*button, text, language_, takenLetters_);
        return button;
    };
    printButton_ = add(Text::Print, QDialogButtonBox::AcceptRole);
    printButton_->setObjectName("printButton");
    printButton_->setDefault(true);
    connect(printButton_, &QPushButton::clicked, this, [this] { print(); });
    auto* cancel =
        buttons->addButton(textWithoutMnemonic(windowText(Text::Cancel, language_)), QDialogButtonBox::RejectRole);
    cancel->setObjectName("cancelButton");
    cancel->setAutoDefault(false);
    connect(cancel, &QPushButton::clicked, this, [this] { reject(); });
    auto* defaults = add(Text::Defaults, QDialogButtonBox::ResetRole);
    defaults->setObjectName("defaultsButton");
    defaults->setAutoDefault(false);
    connect(defaults, &QPushButton::clicked, this, [this] { useDefaults(); });
    auto* more = add(Text::More, QDialogButtonBox::HelpRole);
    more->setObjectName("moreButton");
    more->setAutoDefault(false);
    auto* menu = new QMenu(more);
    QString taken;
    auto* warnings = menu->addAction(textWithMnemonic(windowText(Text::ShowWarnings, language_), taken),
                                     [this] { showWarningsAgain(); });
    warnings->setObjectName("showWarningsAction");
    auto* help =
        menu->addAction(textWithMnemonic(windowText(Text::Help, language_), taken), [this] { showPanelHelp(); });
    help->setShortcut(QKeySequence::HelpContents);
    help->setObjectName("helpAction");
    addAction(help);
    more->setMenu(menu);
    return buttons;
}

void PrintDialog::giveTabTitles() {
    QString taken = takenLetters_;
    const auto give = [&](int index, const QString& title, const QString& preferred = {}) {
        tabs_->setTabText(index, textWithMnemonic(title, taken, preferred));
        tabs_->tabBar()->setAccessibleTabName(index, title);
    };
    give(0, windowText(Text::General, language_), windowText(Text::General, Language::English));
    give(tabs_->count() - 1, windowText(Text::Summary, language_), windowText(Text::Summary, Language::English));
    for (std::size_t index = 0; index < panelTabs_.size(); ++index)
        give(static_cast<int>(index) + 1, QString::fromUtf8(panelTabs_[index].panel->panelName()));
    generalPage_->setTakenLetters(taken);
    summaryPage_->setTakenLetters(taken);
}

// Printers.

void PrintDialog::addPrinters(const std::vector<Printer>& printers) {
    QStringList names;
    for (const Printer& printer : printers) {
        const QString name = QString::fromUtf8(printer.name);
        names << (printer.isSample ? windowText(Text::SamplePrinter, language_).arg(name) : name);
    }
    printers_.insert(printers_.end(), printers.begin(), printers.end());
    generalPage_->addPrinters(names);
    generalPage_->selectPrinter(printer_);
}

void PrintDialog::lookForQueues() {
    generalPage_->setLooking(true);
    search_.findQueues(request_.server, [this](const PrinterSearch::Found& found) {
        actions_.whenIdle([this, found] { offerQueues(found); });
    });
}

// Where the user has not chosen a printer meanwhile, it is the queue that was named, else the default one, else the
// first printer. What is meant for a queue that was named goes to no other.
void PrintDialog::offerQueues(const PrinterSearch::Found& found) {
    generalPage_->setLooking(false);
    addPrinters(found.printers);
    const auto isWanted = [this](const Printer& printer) {
        if (!printer.queue || wanted_.queue.empty())
            return printer.isDefault;
        return printer.queue->queue == wanted_.queue && printer.instance == wanted_.instance;
    };
    const auto wanted = std::ranges::find_if(printers_, isWanted);
    const bool isMissing = printer_ < 0 && wanted == printers_.end();
    if (request_.looksForPreset && request_.printer.empty() && wanted != printers_.end() && wanted->queue)
        request_.printer = wanted->queue->queue; // the default one's preset is meant
    if (printer_ < 0 && !isMissing)
        choosePrinter(static_cast<int>(wanted - printers_.begin()));
    else if (isMissing && wanted_.queue.empty() && !printers_.empty())
        choosePrinter(0);
    if (!found.error.empty())
        tell((message() + u' ' + QString::fromUtf8(found.error)).trimmed(), !undoButton_->isHidden());
    else if (isMissing && !wanted_.queue.empty())
        tell(windowText(Text::QueueNotFound, language_)
                 .arg(QString::fromUtf8(wanted_.queue + (wanted_.instance.empty() ? "" : "/" + wanted_.instance))));
    else if (printers_.empty())
        tell(windowText(Text::NoPrinter, language_));
    else if (isMissing && request_.looksForPreset) // and no queue is the default one, whose it might be
        tell((windowText(Text::NoSuchPreset, language_)
                  .arg(QString::fromUtf8(printers_.front().name),
                       QString::fromUtf8(std::exchange(request_.preset, {}))) +
              u' ' + message())
                 .trimmed(),
             !undoButton_->isHidden());
}

void PrintDialog::userChoosesPrinter(int index) {
    if (actions_.isRunning()) {
        generalPage_->selectPrinter(printer_);
        return;
    }
    userHasBegun_ = true;
    choosePrinter(index);
}

// A queue's PPD is asked for whenever the queue is chosen, and kept no longer than it is the chosen one.
void PrintDialog::choosePrinter(int index) {
    commitNumbers(*this);
    savePopulatedPanels();
    const bool isSame = session_ != nullptr && index == printer_;
    if (session_ != nullptr)
        carried_ = choicesSoFar();
    if (printer_ >= 0)
        printers_[static_cast<std::size_t>(printer_)].ppdText.clear();
    printer_ = index;
    const Printer& printer = printers_[static_cast<std::size_t>(index)];
    const auto kept = remembered_.choices(printer);
    StartChoices choices;
    const bool goesOn = carried_ && userHasBegun_;
    if (goesOn && (isSame || !kept))
        choices = *carried_;
    else
        choices.choices = kept.value_or(std::vector<JobOption>());
    if (!goesOn) {
        // Beside a preset they are made with the preset's; what is the job's own stays when that is undone.
        (awaitsPreset(printer) ? choices.attributes : choices.given) = request_.choices;
    } else if (!isSame) {
        choices.attributes = request_.choices;
        choices.areAll = false;
    }
    generalPage_->selectPrinter(index);
    generalPage_->setRemembers(kept.has_value());
    presetMenu_->setQueue(printer.queue ? printer.queue->queue : std::string());
    generalPage_->setFolderShown(!printer.queue || !request_.folder.empty());
    const int fetch = ++fetches_;
    if (!printer.hasPpdOnServer()) {
        beginAnew(printer, choices);
        applyGivenPreset();
        return;
    }
    endSession();
    tell(windowText(Text::ReadingPrinter, language_));
    search_.fetchPpdOf(*printer.queue, [this, fetch, choices](const FetchedPpd& ppd) {
        actions_.whenIdle([this, fetch, choices, ppd] {
            if (fetch == fetches_)
                beginWithPpd(ppd, choices);
        });
    });
}

void PrintDialog::beginWithPpd(const FetchedPpd& ppd, const StartChoices& choices) {
    Printer& printer = printers_[static_cast<std::size_t>(printer_)];
    printer.ppdText = ppd.text;
    if (!ppd.text.empty()) {
        beginAnew(printer, choices);
        applyGivenPreset();
        return;
    }
    endSession();
    tell(ppd.error.empty() ? windowText(Text::QueueWithoutPpd, language_).arg(QString::fromUtf8(printer.name))
                           : QString::fromUtf8(ppd.error));
}

void PrintDialog::beginAnew(const Printer& printer, const StartChoices& choices, const QString& words) {
    std::vector<printing::MarkedChoice> forPanels;
    std::set<std::string> presetsOptions;
    endSession();
    actions_.run([&] {
        StartedSession started = start(printer, choices);
        forPanels = started.forPanels;
        presetsOptions = started.presetsOptions;
        openSession(std::move(started));
    });
    if (session_ != nullptr && !forPanels.empty()) {
        const QString problems = message();
        actions_.run(
            [&] { chooseOnPanels(forPanels, presetsOptions); },
            Cause{.chosen = forPanels, .words = words.isEmpty() ? windowText(Text::GivenOptions, language_) : words});
        if (!problems.isEmpty())
            tell((problems + u' ' + message()).trimmed(), !undoButton_->isHidden());
    }
    generalPage_->show(session_.get());
    fitLater();
}

// For another session with the same printer.
StartChoices PrintDialog::choicesSoFar() const {
    StartChoices choices = choicesOfSession(*session_);
    choices.attributes = attributes_;
    choices.areAll = true;
    return choices;
}

StartedSession PrintDialog::start(const Printer& printer, const StartChoices& choices) {
    SessionParts parts =
        readAhead_ ? *std::exchange(readAhead_, std::nullopt) : readSessionParts(printer, surroundings());
    return startSession(std::move(parts), printer, choices, surroundings());
}

SessionSurroundings PrintDialog::surroundings() {
    return {.bundle = request_.bundle.empty() ? pathOfPlugInBundle() : request_.bundle,
            .languages = settings_.languages,
            .userDefaults = settings_.userDefaults,
            .presenter = &alerts_,
            .windowHeight = static_cast<double>(height())};
}

void PrintDialog::openSession(StartedSession started) {
    session_ = std::move(started.session);
    if (session_ == nullptr) {
        tell(windowText(Text::PrinterCannotBeUsed, language_).arg(QString::fromUtf8(started.error)));
        return;
    }
    printButton_->setEnabled(true);
    printButton_->setAccessibleDescription({});
    attributes_ = std::move(started.attributes);
    const int copies = std::exchange(keptFields_, std::move(started.fields)).copies;
    if (request_.copies == 0 && generalPage_->copies() == copies) // else the user's own number stays
        generalPage_->setCopies(keptFields_.copies);
    alerts_.setBundle(session_->pluginBundle());
    actions_.setSession(session_.get());
    for (const auto& panel : session_->panels()) {
        auto* page = new QWidget;
        (new QVBoxLayout(page))->setContentsMargins(0, 0, 0, 0);
        tabs_->insertTab(tabs_->count() - 1, page, QString());
        panelTabs_.push_back({.panel = panel.get(), .page = page});
    }
    giveTabTitles();
    for (const auto& panel : framework::PanelList(session_->panels()))
        session_->restorePanel(*panel);
    QStringList problems;
    for (const std::string& problem : started.problems)
        problems << QString::fromUtf8(problem);
    tell(problems.join(u' '));
}

void PrintDialog::endSession() {
    actions_.setSession(nullptr);
    printButton_->setEnabled(false);
    printButton_->setAccessibleDescription(windowText(Text::NoPrinter, language_));
    generalPage_->show(nullptr);
    const QSignalBlocker quiet(tabs_);
    tabs_->setCurrentIndex(0);
    shownTab_ = 0;
    for (PanelTab& tab : panelTabs_) {
        tab.binder.reset(); // before the models that it observes
        delete tab.page;
    }
    panelTabs_.clear();
    if (helpViewer_ != nullptr)
        helpViewer_->close();
    session_.reset();
}

// Panels and pages.

PrintDialog::PanelTab* PrintDialog::tabAt(int index) {
    const int panel = index - 1; // behind the general page
    return panel >= 0 && panel < static_cast<int>(panelTabs_.size()) ? &panelTabs_[static_cast<std::size_t>(panel)]
                                                                     : nullptr;
}

void PrintDialog::populate(PanelTab& tab) {
    if (!session_->showPanel(*tab.panel)) {
        tell(windowText(Text::ViewIncomplete, language_).arg(QString::fromUtf8(tab.panel->thePDEName().value_or(""))));
        return;
    }
    tab.isPopulated = true;
    if (tab.binder != nullptr)
        return;
    QString taken = takenLetters_;
    for (int index = 0; index < tabs_->count(); ++index) {
        const QString title = tabs_->tabText(index);
        taken += title.mid(title.indexOf(u'&') + 1, 1).toUpper();
    }
    tab.binder = std::make_unique<FormBinder>(
        *session_->pluginBundle(), tab.panel->thePDEName().value_or(""), modelsOfForm(*tab.panel->loadedViews()),
        FormBinder::Surroundings{.run = [this](const auto& action) { act(action); },
                                 .sizeChanged = [this] { fitLater(); },
                                 .takenLetters = taken,
                                 .language = language_});
    if (!tab.binder->problems().isEmpty())
        tell(windowText(Text::ViewIncomplete, language_).arg(tab.binder->problems().join(u' ')));
    if (tab.binder->form() == nullptr)
        return;
    tab.page->layout()->addWidget(tab.binder->form());
    tab.binder->form()->show();
    tab.binder->form()->installEventFilter(this);
}

void PrintDialog::showTab(int index) {
    if (index == shownTab_)
        return;
    if (actions_.isRunning()) { // an alert waits: the page stays
        const QSignalBlocker quiet(tabs_);
        tabs_->setCurrentIndex(shownTab_);
        return;
    }
    userHasBegun_ = true;
    commitNumbers(*this);
    actions_.run([&] {
        leaveTab(std::exchange(shownTab_, index));
        if (PanelTab* tab = tabAt(index))
            populate(*tab);
        else if (index == tabs_->count() - 1)
            showSummary();
        else
            generalPage_->show(session_.get());
    });
    focusControl();
    fitLater();
}

// A page that was empty as it came to the front has no control that could have taken the focus.
void PrintDialog::focusControl() {
    const auto takesFocus = [](const QWidget* widget) {
        return widget->isVisible() && widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus) != 0;
    };
    if (focusWidget() != nullptr && takesFocus(focusWidget()))
        return;
    QWidget* const page = tabs_->currentWidget();
    QWidget* next = page->nextInFocusChain();
    while (next != page && !takesFocus(next))
        next = next->nextInFocusChain();
    next->setFocus();
}

void PrintDialog::leaveTab(int index) {
    PanelTab* tab = tabAt(index);
    if (tab != nullptr && tab->isPopulated)
        tab->panel->shouldHide();
}

void PrintDialog::showSummary() {
    savePopulatedPanels();
    summaryPage_->showLines(session_ == nullptr ? std::vector<SummaryLine>() : summaryLines(*session_));
}

// So that nothing typed is lost. What stands in number fields is committed before.
void PrintDialog::savePopulatedPanels() {
    for (const PanelTab& tab : panelTabs_)
        if (tab.isPopulated)
            tab.panel->saveValuesAndReturnError();
}

void PrintDialog::showPanelsAnew() {
    savePopulatedPanels();
    restorePanels();
}

void PrintDialog::restorePanels() {
    for (const PanelTab& tab : panelTabs_)
        session_->restorePanel(*tab.panel);
    for (std::size_t index = 0; index < panelTabs_.size(); ++index) {
        PanelTab& tab = panelTabs_[index];
        if (!tab.isPopulated)
            continue;
        session_->showPanel(*tab.panel);
        if (static_cast<int>(index) + 1 != shownTab_)
            tab.panel->shouldHide();
    }
}

// On their controls, in the order of their keys, as a user makes them. Before, what the panels answer to.
void PrintDialog::chooseOnPanels(const std::vector<printing::MarkedChoice>& choices,
                                 const std::set<std::string>& unlessHeld) {
    std::string error;
    if (const auto twoSided = std::ranges::find(choices, keywords::kDuplex, &printing::MarkedChoice::first);
        twoSided != choices.end())
        (void)session_->markFromOutside(twoSided->first, twoSided->second, true, error); // what did not hold is told
    for (std::size_t index = 0; index < panelTabs_.size(); ++index) {
        PanelTab& tab = panelTabs_[index];
        const auto keys = tab.panel->supportedPPDOptionKeys().value_or(std::vector<std::string>());
        const bool isShown = static_cast<int>(index) + 1 == shownTab_;
        bool isReady = isShown;
        for (const std::string& key : keys) {
            const auto choice = std::ranges::find(choices, key, &printing::MarkedChoice::first);
            if (choice == choices.end() ||
                (unlessHeld.contains(key) && session_->description().markedChoice(key) == choice->second))
                continue;
            if (!std::exchange(isReady, true))
                tab.isPopulated = session_->showPanel(*tab.panel);
            (void)useControl(controlForOption(*tab.panel, key), choice->second); // what did not hold is told
        }
        if (isReady && !isShown)
            tab.panel->shouldHide();
    }
}

// The host's own choices.

void PrintDialog::act(const std::function<void()>& action, const Cause& cause) {
    userHasBegun_ = true;
    if (!actions_.isRunning())
        commitNumbers(*this);
    const auto whole = [this, action] {
        action();
        generalPage_->show(session_.get());
    };
    if (!actions_.run(whole, cause))
        generalPage_->show(session_.get()); // until its turn comes
}

void PrintDialog::userChoosesPaper(const printing::Paper& paper, const printing::MarkedChoice& cause) {
    act(
        [this, paper] {
            if (session_ != nullptr)
                session_->setPaper(paper, true);
        },
        Cause{.chosen = {cause}});
}

void PrintDialog::userMarks(const std::string& option, const std::string& choice) {
    act(
        [this, option, choice] {
            std::string error;
            if (session_ == nullptr)
                return;
            if (!session_->markFromOutside(option, choice, true, error))
                tell(QString::fromUtf8(error));
            if (option == keywords::kOutput)
                showPanelsAnew();
        },
        Cause{.chosen = {{option, choice}}});
}

void PrintDialog::userChoosesColorMatching(const std::string& mode) {
    act([this, mode] {
        if (session_ == nullptr || !session_->settings())
            return;
        session_->settings()->setValueForKey(mode, printing::kColorMatchingModeKey);
        showPanelsAnew();
    });
}

// The panels look at the paper that is printed on.
void PrintDialog::userChoosesScaling(const std::string& pageSize) {
    act([this, pageSize] {
        if (session_ == nullptr || !session_->settings())
            return;
        if (pageSize.empty())
            session_->settings()->removeKey(printing::kPageToPaperMappingKey);
        else
            session_->settings()->setValueForKey(pageSize, printing::kPageToPaperMappingKey);
        session_->setPaper(session_->pageFormat()->paper, true);
    });
}

// What is to be remembered is what will be printed with; what is to be forgotten is forgotten at once.
void PrintDialog::userChoosesToRemember(bool remembers) {
    if (remembers || printer_ < 0)
        return;
    const std::string error = remembered_.forgetChoices(printers_[static_cast<std::size_t>(printer_)]);
    tell(error.empty() ? windowText(Text::ChoicesForgotten, language_)
                       : windowText(Text::NotRemembered, language_).arg(QString::fromUtf8(error)));
}

void PrintDialog::undo() {
    if (session_ == nullptr || actions_.isRunning())
        return;
    const auto before = actions_.takeUndo();
    if (!before)
        return;
    if (before->goBack) {
        before->goBack();
    } else {
        const auto targets = before->differing(*session_);
        act(
            [this, before] {
                savePopulatedPanels();
                before->putBack(*session_);
                restorePanels();
            },
            Cause{.chosen = targets, .words = windowText(Text::Undo, language_)});
    }
    if (message().isEmpty())
        tell(windowText(Text::Undone, language_));
}

void PrintDialog::useDefaults() {
    if (session_ == nullptr || actions_.isRunning())
        return;
    userHasBegun_ = true;
    const int shown = shownTab_;
    Printer printer = printers_[static_cast<std::size_t>(printer_)];
    printer.options.clear(); // what is kept for the queue is no default of the PPD's
    beginAnew(printer, {});
    generalPage_->setCopies(1);
    generalPage_->setPages({});
    request_.priority = given_.priority;
    request_.holdUntil = given_.holdUntil;
    tabs_->setCurrentIndex(std::min(shown, tabs_->count() - 1));
    if (session_ != nullptr)
        tell(windowText(Text::DefaultsBack, language_));
}

// The window.

QString PrintDialog::message() const {
    return message_->text();
}

void PrintDialog::tell(const QString& message, bool canUndo) {
    if (message_ == nullptr)
        return;
    message_->setText(message);
    messageLine_->setVisible(!message.isEmpty());
    if (!canUndo && undoButton_->hasFocus())
        tabs_->setFocus();
    undoButton_->setVisible(canUndo);
    if (!message.isEmpty()) {
        QAccessibleEvent announcement(message_, QAccessible::Alert);
        QAccessible::updateAccessibility(&announcement);
    }
    fitLater();
}

void PrintDialog::fitLater() {
    if (std::exchange(fitWaits_, true))
        return;
    QTimer::singleShot(0, this, [this] {
        fitWaits_ = false;
        fit();
    });
}

// The window is as high as its page needs it, and what the user added to that; and wide enough for every page.
void PrintDialog::fit() {
    for (int index = 0; index < tabs_->count(); ++index) {
        QWidget& page = *tabs_->widget(index);
        QSizePolicy policy = page.sizePolicy();
        policy.setVerticalPolicy(index == tabs_->currentIndex() ? QSizePolicy::Preferred : QSizePolicy::Ignored);
        page.setSizePolicy(policy);
        page.layout()->activate();
    }
    tabs_->updateGeometry();
    layout()->invalidate();
    layout()->activate();
    const bool isFirst = neededHeight_ == 0;
    const int least = layout()->totalSizeHint().width();
    const Remembered::WindowSize kept = isFirst ? remembered_.windowSize() : Remembered::WindowSize();
    const QSize room = screen()->availableGeometry().size();
    const int width = isFirst ? std::max(least, std::min(kept.width, room.width())) : std::max(this->width(), least);
    const int needed =
        layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(width) : layout()->totalSizeHint().height();
    const int extra = isFirst ? kept.extraHeight : std::max(0, height() - neededHeight_);
    neededHeight_ = std::min(needed, room.height());
    setMinimumSize(least, neededHeight_);
    resize(width, std::min(neededHeight_ + extra, room.height()));
}

void PrintDialog::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    if (session_ == nullptr || event->oldSize().height() == event->size().height())
        return;
    session_->setWindowHeight(height());
    for (const PanelTab& tab : panelTabs_) {
        if (tab.binder == nullptr || tab.panel->loadedViews()->resizeAction().empty())
            continue;
        const framework::MessageValue sender{&tab.panel->loadedViews()->root()};
        tab.panel->sendMessage(tab.panel->loadedViews()->resizeAction(), {&sender, 1});
    }
}

// A panel whose area changed its size has new tracking areas.
bool PrintDialog::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::Resize &&
        static_cast<QResizeEvent*>(event)->oldSize() != static_cast<QResizeEvent*>(event)->size())
        for (PanelTab& tab : panelTabs_)
            if (tab.binder != nullptr && tab.binder->form() == object && !std::exchange(tab.isWatched, true))
                QTimer::singleShot(0, tab.page, [this, &tab] {
                    tab.isWatched = false;
                    session_->postFromHost({.name = std::string(keywords::kViewDidUpdateTrackingAreas),
                                            .sender = &tab.panel->loadedViews()->root(),
                                            .userInfo = {}});
                });
    return QDialog::eventFilter(object, event);
}

void PrintDialog::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() != QEvent::FontChange && event->type() != QEvent::PaletteChange &&
        event->type() != QEvent::StyleChange)
        return;
    if (generalPage_ != nullptr)
        refreshLater();
}

// When fonts, colours and the style have reached every widget.
void PrintDialog::refreshLater() {
    QTimer::singleShot(0, this, [this] {
        for (const PanelTab& tab : panelTabs_)
            if (tab.binder != nullptr)
                tab.binder->showAgain();
        generalPage_->fitFields();
        summaryPage_->showAgain();
        fitLater();
    });
}

void PrintDialog::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::HelpContents))
        showPanelHelp();
    else if (event->matches(QKeySequence::Undo))
        undo();
    else
        QDialog::keyPressEvent(event);
}

void PrintDialog::showPanelHelp() {
    PanelTab* tab = tabAt(shownTab_);
    if (tab == nullptr)
        tell(windowText(Text::NoHelp, language_));
    else
        act([&] { tab->panel->shouldShowHelp(); });
}

void PrintDialog::openHelpPage(const std::string& anchor, const std::string& book) {
    const auto page = session_->helpBooks().pageForAnchor(anchor, book, session_->languages());
    if (!page) {
        tell(windowText(Text::NoHelp, language_));
        return;
    }
    if (helpViewer_ == nullptr)
        helpViewer_ = new HelpViewer(*this, language_);
    helpViewer_->showPage(*page);
}

// An alert that the user does not want to see is kept as a Boolean under its key.
void PrintDialog::showWarningsAgain() {
    toolkit::UserDefaults* defaults = settings_.userDefaults;
    const auto identifier = session_ == nullptr ? std::nullopt : session_->pluginBundle()->identifier();
    if (defaults == nullptr || !identifier)
        return;
    toolkit::ValueMap domain = defaults->persistentDomainForName(*identifier).value_or(toolkit::ValueMap());
    std::erase_if(domain, [](const auto& entry) { return entry.second.template as<bool>() != nullptr; });
    defaults->setPersistentDomainForName(std::move(domain), *identifier);
    tell(defaults->synchronize()
             ? windowText(Text::WarningsShown, language_)
             : windowText(Text::WarningsKept, language_).arg(QString::fromUtf8(defaults->lastError())));
}

// Printing.

void PrintDialog::print() {
    if (actions_.isRunning() || session_ == nullptr)
        return;
    commitNumbers(*this);
    if (request_.documents.empty()) {
        tell(windowText(Text::NoDocument, language_));
        return;
    }
    const auto pages = checkedPages();
    if (!pages)
        return;
    const Printer printer = printers_[static_cast<std::size_t>(printer_)];
    const bool toFolder = !printer.queue || !request_.folder.empty();
    std::optional<FetchedPpd> changed;
    // What was chosen may be nothing that the queue has any more.
    const Submission submission = [&](const auto& destination, const auto& job, const auto& progress) {
        if (!toFolder && printer.hasPpdOnServer()) {
            FetchedPpd now = fetchPpd(*printer.queue, kSearchLimits, passwords_.unasked());
            if (now.error.empty() && now.text != printer.ppdText) {
                changed = std::move(now);
                return JobResult();
            }
        }
        return settings_.submission(destination, job, progress);
    };
    SendOutcome outcome;
    const auto givenUp = std::make_shared<std::string>();
    bool sent = false;
    actions_.run([&] {
        if (!session_->shouldPrint())
            return;
        destination_ = {.queue = toFolder ? std::nullopt : printer.queue,
                        .folder = toFolder ? generalPage_->folder().toStdString() : std::string(),
                        .passwords = passwords_.prompt(Text::Print, givenUp)};
        sent = true;
        outcome = JobSender(*this,
                            {.title = windowText(Text::Printing, language_),
                             .sending = windowText(Text::PrintingDocument, language_),
                             .cancelling = windowText(Text::CancellingPrint, language_),
                             .cancel = windowText(Text::Cancel, language_),
                             .bytes = windowText(Text::BytesSent, language_),
                             .status = [this](const JobStatus& status) { return statusInWords(status, language_); }},
                            submission, settings_.status, settings_.cancelling, settings_.authentication)
                      .send(destination_, jobs(*pages));
        if (outcome.failed && outcome.failed->jobId == 0)
            outcome.failed->error = passwords_.errorInWords(outcome.failed->error, givenUp, Text::AskedByPrinting);
    });
    generalPage_->show(session_.get());
    if (changed) {
        beginWithPpd(*changed, choicesSoFar());
        if (session_ != nullptr)
            tell((windowText(Text::PpdChanged, language_) + u' ' + message()).trimmed());
    } else if (sent)
        tellOutcome(outcome);
}

std::optional<std::string> PrintDialog::checkedPages() {
    auto pages = pageRanges(generalPage_->pages());
    if (!pages) {
        tabs_->setCurrentIndex(0);
        generalPage_->focusPages();
        tell(windowText(Text::BadPages, language_));
    }
    return pages;
}

std::vector<JobOption> PrintDialog::jobOptions(const std::string& pages) const {
    std::vector<JobOption> options = attributes_;
    for (JobOption& option : session_->jobOptions())
        options.push_back(std::move(option));
    if (!pages.empty())
        options.push_back({.name = kPageRangesOption, .value = pages});
    return options;
}

// A queue takes all documents as one job.
std::vector<DocumentsJob> PrintDialog::jobs(const std::string& pages) const {
    const JobRequest request{.title = request_.title.empty() ? keptFields_.title : request_.title,
                             .copies = generalPage_->copies(),
                             .options = jobOptions(pages),
                             .priority = request_.priority == 0 ? keptFields_.priority : request_.priority,
                             .holdUntil = request_.holdUntil.empty() ? keptFields_.holdUntil : request_.holdUntil};
    if (destination_.queue)
        return {{.request = request, .documents = request_.documents}};
    std::vector<DocumentsJob> jobs;
    for (const std::string& document : request_.documents)
        jobs.push_back({.request = request, .documents = {document}});
    return jobs;
}

// What was sent is not sent again.
void PrintDialog::tellOutcome(const SendOutcome& outcome) {
    if (destination_.queue && !outcome.sent.empty())
        request_.documents.clear();
    else
        request_.documents.erase(request_.documents.begin(),
                                 request_.documents.begin() + static_cast<std::ptrdiff_t>(outcome.sent.size()));
    QStringList notes;
    for (const JobResult& result : outcome.sent) {
        printed_.push_back(result);
        if (!result.note.empty())
            notes << QString::fromUtf8(result.note);
    }
    const bool isLeft = outcome.failed && outcome.failed->jobId != 0; // a job that could not be taken back
    if (outcome.cancelled && !isLeft) {
        tell(windowText(Text::PrintingCancelled, language_));
    } else if (outcome.failed) {
        tell(QString::fromUtf8(outcome.failed->error));
        showMessage(*this, QMessageBox::Critical, windowText(Text::NotPrinted, language_),
                    QString::fromUtf8(outcome.failed->error) + u'\n' + windowText(Text::KeptChoices, language_),
                    windowText(Text::Close, language_));
    } else {
        if (!notes.isEmpty())
            showMessage(*this, QMessageBox::Information, windowText(Text::PrintedWithNote, language_),
                        notes.join(u'\n'), windowText(Text::Close, language_));
        if (generalPage_->remembers()) {
            const std::string error =
                remembered_.keepChoices(printers_[static_cast<std::size_t>(printer_)], choicesToRemember(*session_));
            if (!error.empty())
                showMessage(*this, QMessageBox::Warning, windowText(Text::PrintedWithNote, language_),
                            windowText(Text::NotRemembered, language_).arg(QString::fromUtf8(error)),
                            windowText(Text::Close, language_));
        }
        accept();
    }
}

void PrintDialog::reject() {
    if (!actions_.isRunning()) // an alert is answered first
        QDialog::reject();
}

void PrintDialog::done(int result) {
    passwords_.refuse();
    remembered_.keepWindowSize({.width = width(), .extraHeight = std::max(0, height() - neededHeight_)});
    QDialog::done(result);
}

} // namespace host
