// Presets of a queue: the button beside the printer, what it asks, and what becomes of the answers.

#include "window_under_test.h"

#include "host/jobs/presets.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>

#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

using tests::WindowUnderTest;

namespace {

constexpr const char* kPhoto = "Dest Office/photo CVMediaType=Glossy copies=3\n";

/// A dialog for a queue, opened with a choice and with a preset of the queue Office.
WindowUnderTest::Setup besideOfficesPreset(const host::JobOption& choice, const char* queue) {
    return {.choices = {choice},
            .queue = queue,
            .printer = "Office",
            .preset = "photo",
            .presetChoices = {{"CVMediaType", "Glossy"}}};
}

/// What a modal window is answered with: its names' fields are filled, then its button is clicked. The click comes from
/// the event loop, so that what it opens can be answered, too.
std::function<void(QWidget&)> clicked(const QString& button) {
    return [button](QWidget& asking) {
        auto* found = asking.findChild<QPushButton*>(button);
        if (found == nullptr)
            qFatal("There is no button \"%s\".", qPrintable(button));
        QTimer::singleShot(0, found, [found] { found->click(); });
    };
}

std::function<void(QWidget&)> named(const QString& name) {
    return [name](QWidget& asking) {
        auto* field = asking.findChild<QLineEdit*>("presetNameField");
        field->selectAll();
        QTest::keyClicks(field, name);
        clicked("presetActionButton")(asking);
    };
}

QString refusalIn(QWidget& asking) {
    const auto* label = asking.findChild<QLabel*>("presetRefusal");
    return label->isVisible() ? label->text() : QString();
}

/// Opens the menu and uses one of its items, by the keyboard alone. The menu has an event loop of its own.
void use(WindowUnderTest& window, const QString& title) {
    auto& button = window.widget<QPushButton>("presetsButton");
    QMenu& menu = *button.menu();
    bool isUsed = false;
    QTimer::singleShot(0, &menu, [&] {
        const auto isThere = [&] {
            return menu.activeAction() != nullptr && QString(menu.activeAction()->text()).remove(u'&') == title;
        };
        for (qsizetype step = 0; step < menu.actions().size() && !isThere(); ++step)
            QTest::keyClick(&menu, Qt::Key_Down);
        isUsed = menu.isVisible() && isThere();
        QTest::keyClick(&menu, isUsed ? Qt::Key_Return : Qt::Key_Escape);
    });
    button.setFocus();
    QTest::keyClick(&button, Qt::Key_Space);
    QCoreApplication::processEvents();
    QVERIFY2(isUsed, qPrintable(title));
}

QStringList itemsOf(WindowUnderTest& window) {
    QMenu& menu = *window.widget<QPushButton>("presetsButton").menu();
    emit menu.aboutToShow();
    QStringList items;
    for (const QAction* action : menu.actions())
        if (action->isEnabled() && !action->isSeparator())
            items << QString(action->text()).remove(u'&');
    return items;
}

} // namespace

class WindowPresetsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> home_;

    /// The file that keeps this user's presets: of root's it is everyone's.
    QString file() const { return home_->filePath(::geteuid() == 0 ? "lpoptions" : ".cups/lpoptions"); }
    void write(const QByteArray& lines) const {
        QFile kept(file());
        QVERIFY(kept.open(QIODevice::WriteOnly) && kept.write(lines) == lines.size());
    }
    QByteArray lines() const {
        QFile kept(file());
        return kept.open(QIODevice::ReadOnly) ? kept.readAll() : QByteArray();
    }

private slots:
    void init() {
        home_ = std::make_unique<QTemporaryDir>();
        QDir(home_->path()).mkdir(".cups");
        qputenv("HOME", home_->path().toUtf8());
        qputenv("CUPS_SERVERROOT", home_->path().toUtf8());
    }

    void aPrinterThatIsNoQueueHasNoneAndTheButtonSaysWhy() {
        WindowUnderTest window;
        const auto& button = window.widget<QPushButton>("presetsButton");
        QVERIFY(button.isVisible() && !button.isEnabled());
        QVERIFY(button.toolTip().contains("queues"));
        QCOMPARE(button.accessibleDescription(), button.toolTip());
        WindowUnderTest queue({.queue = "Office"});
        QVERIFY(queue.widget<QPushButton>("presetsButton").isEnabled());
        QCOMPARE(queue.widget<QPushButton>("presetsButton").accessibleName(), QString("Presets"));
        QVERIFY(queue.widget<QPushButton>("presetsButton").toolTip().isEmpty());
    }

    void whatIsChosenIsSavedAsAnInstanceOfTheQueue() {
        WindowUnderTest window({.queue = "Office"});
        window.open(WindowUnderTest::PrintSetting);
        window.pick("mediaTypePopup", "Other Glossy Paper");
        window.open(WindowUnderTest::General);
        window.widget<QSpinBox>("copiesField").setValue(2);
        window.widget<QLineEdit>("pagesField").setText("1-4, 7");
        window.answer({named("photo")});
        use(window, "Save preset…");
        QCOMPARE(window.dialog().message(), QString("The preset “photo” has been saved."));
        const QByteArray line = lines();
        QVERIFY2(line.startsWith("Dest Office/photo ") && line.count('\n') == 1, line);
        for (const char* option :
             {" CVMediaType=Glossy ", " CVResolution=Photo", " PageSize=A4", " copies=2 ", " page-ranges=1-4,7"})
            QVERIFY2(line.contains(option), option);
        window.widget<QSpinBox>("copiesField").setValue(1);
        window.answer({named("one")});
        use(window, "Save preset…");
        QCOMPARE(lines().count("copies="), 1);
    }

    void pagesThatAreNoneAreNotSaved() {
        WindowUnderTest window({.queue = "Office"});
        window.widget<QLineEdit>("pagesField").setText("four");
        use(window, "Save preset…");
        QVERIFY(window.dialog().message().startsWith("Pages are numbers"));
        QVERIFY(lines().isEmpty());
    }

    void aPresetsChoicesAreMadeWithTheirRulesAndUndoneAsOneStep() {
        write(kPhoto);
        WindowUnderTest window({.queue = "Office"});
        window.pick("paperList", "Letter");
        window.widget<QSpinBox>("copiesField").setValue(5);
        window.widget<QLineEdit>("pagesField").setText("2");
        const auto before = window.session().description().marks();
        use(window, "photo");
        QCOMPARE(window.marked("CVMediaType"), QString("Glossy"));
        QCOMPARE(window.marked("CVResolution"), QString("Photo"));
        QCOMPARE(window.marked("PageSize"), QString("A4"));
        QCOMPARE(window.widget<QSpinBox>("copiesField").value(), 3);
        QCOMPARE(window.widget<QLineEdit>("pagesField").text(), QString());
        const QString told = window.dialog().message();
        QVERIFY2(told.startsWith("Because you chose the preset “photo”: "), qPrintable(told));
        QVERIFY2(told.contains("Print Quality is now Photo"), qPrintable(told));
        window.click("undoButton");
        QVERIFY(window.session().description().marks() == before);
        QCOMPARE(window.widget<QComboBox>("paperList").currentText(), QString("Letter"));
        QCOMPARE(window.widget<QSpinBox>("copiesField").value(), 5);
        QCOMPARE(window.widget<QLineEdit>("pagesField").text(), QString("2"));
        QCOMPARE(window.dialog().message(), QString("The step has been undone."));
    }

    void aPresetThatWasNamedIsChosenAsFromTheMenu() {
        const std::vector<host::JobOption> photo = {{"CVMediaType", "Glossy"}, {"copies", "3"}, {"page-ranges", "2"}};
        WindowUnderTest plain({.queue = "Office", .kept = {{"PageSize", "A5"}}});
        WindowUnderTest window({.queue = "Office",
                                .kept = {{"PageSize", "A5"}},
                                .printer = "Office",
                                .preset = "photo",
                                .presetChoices = photo});
        QCOMPARE(window.marked("CVMediaType"), QString("Glossy"));
        QCOMPARE(window.marked("PageSize"), QString("A5"));
        QCOMPARE(window.widget<QSpinBox>("copiesField").value(), 3);
        QCOMPARE(window.widget<QLineEdit>("pagesField").text(), QString("2"));
        const QString told = window.dialog().message();
        QVERIFY2(told.startsWith("Because you chose the preset “photo”: "), qPrintable(told));
        window.click("undoButton");
        QVERIFY(window.session().description().marks() == plain.session().description().marks());
        QCOMPARE(window.widget<QSpinBox>("copiesField").value(), 1);
    }

    void whatIsGivenBesideANamedPresetGoesBefore() {
        WindowUnderTest window({.choices = {{"CVMediaType", "Plain"}, {"page-ranges", "4"}},
                                .queue = "Office",
                                .printer = "Office",
                                .preset = "photo",
                                .presetChoices = {{"CVMediaType", "Glossy"},
                                                  {"CVResolution", "Photo"},
                                                  {"copies", "3"},
                                                  {"page-ranges", "2"}},
                                .copies = 5});
        QCOMPARE(window.marked("CVMediaType"), QString("Plain"));
        QCOMPARE(window.widget<QSpinBox>("copiesField").value(), 5);
        QCOMPARE(window.widget<QLineEdit>("pagesField").text(), QString("4"));
        const QString told = window.dialog().message();
        QVERIFY2(told.startsWith("Because you chose the preset “photo” and the options that were given: "),
                 qPrintable(told));
    }

    void theJobsOwnOptionsBesideANamedPresetAreNotUndone() {
        WindowUnderTest window(besideOfficesPreset({"number-up", "2"}, "Office"));
        QCOMPARE(window.marked("CVMediaType"), QString("Glossy"));
        window.click("undoButton");
        QCOMPARE(window.marked("CVMediaType"), QString("Plain"));
        window.answer({[](QWidget& alert) {
            static_cast<QDialog&>(alert).findChild<QPushButton*>("normalPaperAlertOKButton")->click();
        }});
        window.click("printButton");
        const QJsonObject ticket = QJsonDocument::fromJson(window.ticket()).object();
        QCOMPARE(ticket["options"].toObject()["number-up"].toString(), QString("2"));
    }

    void aNamedPresetIsChosenWithAPpdThatStandsForItsQueue() {
        WindowUnderTest window({.printer = "Office",
                                .preset = "photo",
                                .presetChoices = {{"CVMediaType", "Glossy"}, {"copies", "3"}},
                                .isPpdGiven = true});
        QCOMPARE(window.marked("CVMediaType"), QString("Glossy"));
        QCOMPARE(window.widget<QSpinBox>("copiesField").value(), 3);
        QVERIFY(window.widget<QPushButton>("undoButton").isVisible());
    }

    void aNamedPresetIsForItsQueueAlone() {
        WindowUnderTest window(besideOfficesPreset({"CVBiDir", "OFF"}, "Other"));
        QCOMPARE(window.marked("CVMediaType"), QString("Plain"));
        QCOMPARE(window.marked("CVBiDir"), QString("OFF"));
    }

    void aChoiceThatIsRefusedOrUnknownIsTold() {
        write("Dest Office/odd CVInputSlot=Tray2 CVMediaType=Glossy CVResolution=Marble copies=none\n");
        WindowUnderTest window({.queue = "Office"});
        use(window, "odd");
        QCOMPARE(window.marked("CVMediaType"), QString("Glossy"));
        QVERIFY(window.marked("CVInputSlot") != "Tray2");
        const QString told = window.dialog().message();
        for (const char* words : {"cannot be used together with", "Marble", "The number of copies"})
            QVERIFY2(told.contains(words), qPrintable(told));
        QVERIFY(window.widget<QPushButton>("undoButton").isVisible());
    }

    void whatWasSavedComesBackWhole() {
        WindowUnderTest window({.queue = "Office"});
        window.pick("paperList", "Letter");
        window.pick("twoSidedList", 1);
        window.open(WindowUnderTest::ColorSetting);
        window.click("optionButton");
        window.click("colorEnhanceButton");
        window.widget<QSpinBox>("redField").setValue(5);
        window.open(WindowUnderTest::General);
        const auto saved = window.session().description().marks();
        window.answer({named("mine")});
        use(window, "Save preset…");
        window.click("defaultsButton");
        const auto defaults = window.session().description().marks();
        QVERIFY(defaults != saved);
        use(window, "mine");
        QCOMPARE(window.dialog().message(), QString("The choices of the preset “mine” have been made."));
        QVERIFY(window.session().description().marks() == saved);
        window.open(WindowUnderTest::ColorSetting);
        QCOMPARE(window.widget<QSpinBox>("redField").value(), 5);
        window.dialog().undo();
        QVERIFY(window.session().description().marks() == defaults);
        window.open(WindowUnderTest::ColorSetting);
        QCOMPARE(window.widget<QSpinBox>("redField").value(), 0);
    }

    void whatAPresetDoesNotNameIsAsThePrinterStarts() {
        write(kPhoto);
        WindowUnderTest window({.queue = "Office", .kept = {{"PageSize", "A5"}}});
        window.pick("paperList", "Letter");
        window.pick("twoSidedList", 1);
        use(window, "photo");
        QCOMPARE(window.marked("PageSize"), QString("A5"));
        QCOMPARE(window.marked("Duplex"), QString("None"));
    }

    void namesThatNoPresetCanHaveAreRefusedAndCanBeChanged() {
        WindowUnderTest window({.queue = "Office"});
        QStringList told;
        const auto then = [&](const QString& name) {
            return [&told, name](QWidget& asking) {
                told << refusalIn(asking);
                named(name)(asking);
            };
        };
        window.answer({named(""), then("two words"), then("a/b"), then("good")});
        use(window, "Save preset…");
        QCOMPARE(told.size(), 3);
        QCOMPARE(told[0], QString("A preset needs a name: give it one."));
        QVERIFY2(told[1].startsWith("A name has no blanks"), qPrintable(told[1]));
        QCOMPARE(told[2], told[1]);
        QCOMPARE(lines().count('\n'), 1);
        QVERIFY(lines().startsWith("Dest Office/good "));
    }

    void beforeAPresetIsReplacedItIsAsked() {
        write(kPhoto);
        WindowUnderTest window({.queue = "Office"});
        window.answer({named("PHOTO"), clicked("keepButton"), clicked("presetCancelButton")});
        use(window, "Save preset…");
        QCOMPARE(window.answered(), 3);
        QCOMPARE(lines(), QByteArray(kPhoto));
        window.answer({named("photo"), clicked("replaceButton")});
        use(window, "Save preset…");
        QVERIFY(lines().contains("CVMediaType=Plain"));
        QCOMPARE(lines().count('\n'), 1);
    }

    void presetsAreRenamedButNotOverOthers() {
        write(QByteArray(kPhoto) + "Dest Office/text CVMediaType=Plain\n");
        WindowUnderTest window({.queue = "Office"});
        QString told;
        window.answer({named("text"), [&](QWidget& asking) {
                           told = refusalIn(asking);
                           named("album")(asking);
                       }});
        use(window, "Rename preset…");
        QCOMPARE(told, QString("There is a preset “text” already: choose another name."));
        QCOMPARE(window.dialog().message(), QString("The preset “photo” is called “album” now."));
        QCOMPARE(lines(),
                 QByteArray("Dest Office/album CVMediaType=Glossy copies=3\nDest Office/text CVMediaType=Plain\n"));
    }

    void presetsAreDeletedAfterAQuestion() {
        write(QByteArray(kPhoto) + "Dest Office/text CVMediaType=Plain\n");
        WindowUnderTest window({.queue = "Office"});
        window.answer({clicked("presetCancelButton")});
        use(window, "Delete preset…");
        QCOMPARE(lines().count('\n'), 2);
        window.answer({[](QWidget& asking) {
            asking.findChild<QComboBox*>("presetList")->setCurrentText("text");
            clicked("presetActionButton")(asking);
        }});
        use(window, "Delete preset…");
        QCOMPARE(window.dialog().message(), QString("The preset “text” has been deleted."));
        QCOMPARE(lines(), QByteArray(kPhoto));
    }

    void theMenuShowsThePresetsThatThereAreNow() {
        WindowUnderTest window({.queue = "Office"});
        QCOMPARE(itemsOf(window), QStringList{"Save preset…"});
        write("Dest Office/b x=1\nDest Office/a x=1\nDest Other/c x=1\nDest Office x=1\n");
        QCOMPARE(itemsOf(window), (QStringList{"a", "b", "Save preset…", "Rename preset…", "Delete preset…"}));
    }

    void aFullDiskIsToldAndLosesNothing() {
        write(kPhoto);
        WindowUnderTest window({.queue = "Office"});
        rlimit former{};
        QCOMPARE(::getrlimit(RLIMIT_FSIZE, &former), 0);
        const auto handler = ::signal(SIGXFSZ, SIG_IGN);
        const rlimit full{.rlim_cur = 0, .rlim_max = former.rlim_max};
        QString told, typed;
        window.answer({[&](QWidget& asking) {
                           ::setrlimit(RLIMIT_FSIZE, &full);
                           named("other")(asking);
                       },
                       [&](QWidget& asking) {
                           ::setrlimit(RLIMIT_FSIZE, &former);
                           told = refusalIn(asking);
                           typed = asking.findChild<QLineEdit*>("presetNameField")->text();
                           clicked("presetActionButton")(asking);
                       }});
        use(window, "Save preset…");
        ::signal(SIGXFSZ, handler);
        QVERIFY2(told.startsWith("The presets in ") && told.contains("cannot be changed"), qPrintable(told));
        QCOMPARE(typed, QString("other"));
        QVERIFY(lines().startsWith(QByteArray(kPhoto) + "Dest Office/other "));
    }

    void aFileThatCannotBeReadIsTold() {
        QVERIFY(QDir().mkpath(file()));
        WindowUnderTest window({.queue = "Office"});
        QCOMPARE(itemsOf(window), QStringList{"Save preset…"});
        QVERIFY2(window.dialog().message().contains("no regular file"), qPrintable(window.dialog().message()));
    }
};

QTEST_MAIN(WindowPresetsTest)
#include "window_presets_test.moc"
