// Every control of both panels, driven through its widget.

#include "window_under_test.h"

#include "host/window/pop_up_box.h"
#include "toolkit/button.h"
#include "toolkit/image_view.h"
#include "toolkit/number_field.h"
#include "toolkit/popup_list.h"
#include "toolkit/radio_matrix.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLayoutItem>
#include <QListView>
#include <QMap>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSlider>
#include <QSpinBox>
#include <QStackedWidget>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QToolButton>

using tests::WindowUnderTest;

namespace {

struct Control {
    const char* widget;
    const char* option;
    const char* page; // of the advanced options, or null
};

constexpr Control kPopUps[] = {
    {"mediaTypePopup", "CVMediaType", nullptr},    {"resolutionPopup", "CVResolution", nullptr},
    {"monoColorPopup", "CVMonoColor", nullptr},    {"paperThickPopup", "CVColorPaperThick", nullptr},
    {"paperFeedPopup", "CVInputSlot", nullptr},    {"jpegPopup", "CVJpeg", "jpegPage"},
    {"duplexPopup", "CVDuplexMode", "duplexPage"},
};

constexpr Control kCheckBoxes[] = {
    {"mirrorButton", "MirrorPrint", "layoutPage"},
    {"reverseButton", "CVReverse", "layoutPage"},
    {"vertLineAlignA3Button", "CVVertLineAlignA3B4Ledger", "vertLinePage"},
    {"vertLineAlignA4Button", "CVVertLineAlignA4Letter", "vertLinePage"},
    {"vertLineAlignOtherButton", "CVVertLineAlignOther", "vertLinePage"},
    {"slowDryButton", "CVSlowDrying", "otherPage"},
    {"biDirButton", "CVBiDir", "otherPage"},
};

constexpr const char* kAdjustments[] = {"brightness", "contrast", "red", "green", "blue"};

void openAdvanced(WindowUnderTest& window) {
    window.click("optionButton");
}

// Selects the entry of the advanced options whose page bears the name, by the keyboard.
void openAdvancedPage(WindowUnderTest& window, const char* page) {
    auto& list = window.widget<QListView>("advancedTableView");
    auto& pages = window.widget<QStackedWidget>("advancedTabView");
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_Home);
    for (int row = 0; row < list.model()->rowCount() && pages.currentWidget()->objectName() != page; ++row)
        QTest::keyClick(&list, Qt::Key_Down);
    QCOMPARE(pages.currentWidget()->objectName(), QString(page));
}

QImage preview(WindowUnderTest& window) {
    return window.widget<QLabel>("effectImageView").pixmap().toImage();
}

void openAdjustments(WindowUnderTest& window) {
    window.open(WindowUnderTest::ColorSetting);
    openAdvanced(window);
    if (!window.widget<QCheckBox>("colorEnhanceButton").isChecked())
        window.click("colorEnhanceButton");
}

} // namespace

class WindowPanelsTest : public QObject {
    Q_OBJECT

private slots:
    void everyPopUpListMarksWhatTheUserPicks() {
        for (const Control& control : kPopUps) {
            WindowUnderTest window;
            window.open(WindowUnderTest::PrintSetting);
            if (control.page != nullptr) {
                openAdvanced(window);
                openAdvancedPage(window, control.page);
            }
            auto& box = window.widget<QComboBox>(control.widget);
            auto& model =
                dynamic_cast<toolkit::PopUpList&>(window.model(WindowUnderTest::PrintSetting, control.widget));
            int row = -1;
            for (int index = 0; index < box.count(); ++index)
                if (index != box.currentIndex() && model.items()[static_cast<std::size_t>(index)].enabled)
                    row = index;
            window.answer({[](QWidget& alert) { static_cast<QDialog&>(alert).accept(); }});
            window.pick(control.widget, row);
            QVERIFY2(row == model.selectedIndex() && row == box.currentIndex(), control.widget);
            QCOMPARE(window.marked(control.option), QString::fromStdString(model.selectedKeyword().value()));
        }
    }

    void everyCheckBoxMarksWhatTheUserChecks() {
        for (const Control& control : kCheckBoxes) {
            WindowUnderTest window;
            window.open(WindowUnderTest::PrintSetting);
            openAdvanced(window);
            openAdvancedPage(window, control.page);
            auto& box = window.widget<QCheckBox>(control.widget);
            if (!box.isEnabled()) { // plain paper dries fast
                window.pick("mediaTypePopup", 3);
                QVERIFY2(box.isEnabled(), control.widget);
            }
            const QString before = window.marked(control.option);
            const bool was = box.isChecked();
            window.click(control.widget);
            QVERIFY2(box.isChecked() != was, control.widget);
            QVERIFY2(window.marked(control.option) != before, control.widget);
        }
    }

    void anActionRunsOncePerChoice() {
        WindowUnderTest window;
        window.open(WindowUnderTest::PrintSetting);
        auto& model = dynamic_cast<toolkit::PopUpList&>(window.model(WindowUnderTest::PrintSetting, "monoColorPopup"));
        int runs = 0;
        model.setAction([&](toolkit::Control&) { ++runs; });
        window.pick("monoColorPopup", 1);
        QCOMPARE(runs, 1);
    }

    void aChangeByRulesRunsNoAction() {
        WindowUnderTest window;
        window.open(WindowUnderTest::PrintSetting);
        auto& model = dynamic_cast<toolkit::PopUpList&>(window.model(WindowUnderTest::PrintSetting, "resolutionPopup"));
        int runs = 0;
        model.setAction([&](toolkit::Control&) { ++runs; });
        const QString shown = window.widget<QComboBox>("resolutionPopup").currentText();
        window.pick("mediaTypePopup", 3);
        QVERIFY(window.widget<QComboBox>("resolutionPopup").currentText() != shown);
        QCOMPARE(runs, 0);
    }

    void disabledItemsCannotBePicked() {
        WindowUnderTest window;
        window.pick("paperList", "A4 (Borderless)");
        window.open(WindowUnderTest::PrintSetting);
        auto& box = window.widget<QComboBox>("mediaTypePopup");
        auto& model = dynamic_cast<toolkit::PopUpList&>(window.model(WindowUnderTest::PrintSetting, "mediaTypePopup"));
        int disabled = -1;
        for (int row = 0; row < box.count(); ++row)
            if (!model.items()[static_cast<std::size_t>(row)].enabled)
                disabled = row;
        QVERIFY(disabled >= 0);
        const int before = box.currentIndex();
        box.showPopup();
        const QRect place = box.view()->visualRect(box.model()->index(disabled, 0));
        QTest::mouseMove(box.view()->viewport(), place.center());
        QTest::mouseClick(box.view()->viewport(), Qt::LeftButton, {}, place.center());
        QCOMPARE(model.selectedIndex(), before);
        QVERIFY(box.view()->isVisible());
        QVERIFY(box.accessibleDescription().contains(box.itemText(disabled)));
        box.hidePopup();
    }

    void theListThatPopsUpIsMadeWhenItIsShown() {
        WindowUnderTest window;
        window.open(WindowUnderTest::PrintSetting);
        auto& box = window.widget<QComboBox>("resolutionPopup");
        QVERIFY(box.findChild<QAbstractItemView*>() == nullptr);
        box.showPopup();
        QVERIFY(box.findChild<QAbstractItemView*>() != nullptr);
        box.hidePopup();
    }

    void aListIsAsWideAsItsItems() {
        WindowUnderTest window;
        window.open(WindowUnderTest::PrintSetting);
        auto& box = window.widget<QComboBox>("resolutionPopup");
        const QString longText(80, u'm');
        const int before = box.sizeHint().width();
        box.addItem(longText);
        const int wide = box.sizeHint().width();
        QVERIFY(wide > before);
        QVERIFY(wide > box.fontMetrics().horizontalAdvance(longText));
        QCOMPARE(box.minimumSizeHint().width(), wide);
        box.removeItem(box.count() - 1);
        QCOMPARE(box.sizeHint().width(), before);
        QFont large = box.font();
        large.setPointSize(2 * large.pointSize());
        box.setFont(large);
        QVERIFY(box.sizeHint().width() > before);
        QFont small = box.font();
        small.setPointSize(small.pointSize() / 4);
        box.setFont(small);
        QVERIFY(box.sizeHint().width() < before);
        QCOMPARE(QWidgetItem(&box).minimumSize().width(), box.sizeHint().width()); // in its layout
    }

    void aListIsAsWideAsItsWidestItemAlone_data() {
        QTest::addColumn<QStringList>("items");
        QTest::newRow("the first") << QStringList{"Photo Paper Pro Luster", "Plain Paper", "Glossy"};
        QTest::newRow("the last") << QStringList{"Plain", "Plain Paper", "Plain Paper, two-sided"};
        QTest::newRow("fewer letters") << QStringList{"illiillii", "WWWWWW", "iiiiiiiiii"};
        QTest::newRow("nearly as wide") << QStringList{"A4 AVAVAV", "A4 VAVAVA", "A4 AAAVVV", "A4 .VA.VA"};
        QTest::newRow("other scripts") << QStringList{"Postcard", "はがき 宛名面", "明信片"};
        QTest::newRow("other planes") << QStringList{"Plain Paper",
                                                     QString::fromUcs4(U"\U0001F5A8\U0001F5A8\U0001F5A8"
                                                                       U"\U0001F5A8\U0001F5A8\U0001F5A8")};
    }

    void aListIsAsWideAsItsWidestItemAlone() {
        QFETCH(QStringList, items);
        const auto width = [](const QStringList& texts) {
            host::PopUpBox box;
            box.addItems(texts);
            return box.sizeHint().width();
        };
        int widest = 0;
        for (const QString& item : items)
            widest = std::max(widest, width({item}));
        QCOMPARE(width(items), widest);
    }

    void aListIsAsWideAsLettersThatStandOut() {
        host::PopUpBox box;
        QFont font = box.font();
        font.setPointSize(10);
        box.setFont(font);
        const QString wide = "Yg1,/rL"; // wider than its letters one by one
        box.addItem(wide);
        const int widest = box.sizeHint().width();
        box.clear();
        for (int narrow = 0; narrow < 10 && box.sizeHint().width() != widest - 1; ++narrow)
            for (int wider = 0; wider < 10 && box.sizeHint().width() != widest - 1; ++wider) {
                box.clear();
                box.addItem(QString(narrow, 'l') + QString(wider, 'n'));
            }
        QCOMPARE(box.sizeHint().width(), widest - 1);
        box.addItem(wide);
        QCOMPARE(box.sizeHint().width(), widest);
    }

    void aListHasRoomForPicturesOfANewSize() {
        host::PopUpBox box;
        QPixmap picture(8, 8);
        picture.fill(Qt::black);
        box.addItem(QIcon(picture), "Stapled");
        box.setIconSize({8, 8});
        const QSize before = box.sizeHint();
        box.setIconSize({64, 48});
        QCOMPARE(box.sizeHint().width(), before.width() + 56);
        QVERIFY(box.sizeHint().height() > 48);
        box.setIconSize({8, 8});
        QCOMPARE(box.sizeHint(), before);
    }

    void thePreviewIsDrawnWhereItIsSeen() {
        WindowUnderTest window;
        window.open(WindowUnderTest::ColorSetting);
        QVERIFY(preview(window).isNull());
        openAdjustments(window);
        const QImage seen = preview(window);
        QVERIFY(!seen.isNull());
        window.click("optionButton"); // closes the area
        dynamic_cast<toolkit::NumberField&>(window.model(WindowUnderTest::ColorSetting, "brightnessSlider"))
            .userSetValue(20);
        QCOMPARE(preview(window), seen);
        window.click("optionButton");
        QVERIFY(preview(window) != seen);
    }

    void theAdvancedOptionsStandInStepWithTheirList() {
        WindowUnderTest window;
        window.open(WindowUnderTest::PrintSetting);
        openAdvanced(window);
        auto& list = window.widget<QListView>("advancedTableView");
        auto& pages = window.widget<QStackedWidget>("advancedTabView");
        const QStringList expected = {"layoutPage", "jpegPage", "duplexPage", "vertLinePage", "otherPage"};
        QCOMPARE(list.model()->rowCount(), expected.size());
        for (int row = 0; row < expected.size(); ++row) {
            QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                              list.visualRect(list.model()->index(row, 0)).center());
            QCOMPARE(pages.currentWidget()->objectName(), expected[row]);
        }
    }

    void theDisclosureShowsItsAreaAndTheWindowFollows() {
        for (const auto page : {WindowUnderTest::PrintSetting, WindowUnderTest::ColorSetting}) {
            WindowUnderTest window;
            window.open(page);
            auto& area = window.widget<QFrame>("advancedArea");
            QVERIFY(!area.isVisible());
            const int closed = window.dialog().height();
            openAdvanced(window);
            QVERIFY(area.isVisible());
            QTRY_VERIFY(window.dialog().height() > closed + 50);
            QVERIFY(window.dialog().height() >= window.dialog().sizeHint().height());
            openAdvanced(window);
            QVERIFY(!area.isVisible());
            QTRY_COMPARE(window.dialog().height(), closed);
        }
    }

    void theRadioButtonsMarkTheColorMatching() {
        WindowUnderTest window;
        window.open(WindowUnderTest::ColorSetting);
        const auto buttons = window.widget<QGroupBox>("colorMatchingMatrix").findChildren<QRadioButton*>();
        auto& matrix =
            dynamic_cast<toolkit::RadioMatrix&>(window.model(WindowUnderTest::ColorSetting, "colorMatchingMatrix"));
        QCOMPARE(static_cast<std::size_t>(buttons.size()), matrix.cells().size());
        for (int row = static_cast<int>(buttons.size()) - 1; row >= 0; --row) {
            buttons[row]->click();
            QCOMPARE(matrix.selectedRow(), row);
            QVERIFY(buttons[row]->isChecked());
            QCOMPARE(window.marked("CVColorMatching"),
                     QString::fromStdString(matrix.cells()[static_cast<std::size_t>(row)].keyword.value()));
        }
    }

    void theHalftoneListMarksWhatTheUserPicks() {
        WindowUnderTest window;
        window.open(WindowUnderTest::ColorSetting);
        auto& box = window.widget<QComboBox>("ditherPopup");
        const QString before = window.marked("CVHalfTonePattern");
        window.pick("ditherPopup", 1 - box.currentIndex());
        QVERIFY(window.marked("CVHalfTonePattern") != before);
    }

    void slidersAndFieldsShareTheirValue() {
        WindowUnderTest window;
        openAdjustments(window);
        for (const QString name : kAdjustments) {
            auto& slider = window.widget<QSlider>(name + "Slider");
            auto& field = window.widget<QSpinBox>(name + "Field");
            QVERIFY2(slider.isEnabled() && field.isEnabled(), qPrintable(name));
            slider.setFocus();
            QTest::keyClick(&slider, Qt::Key_End);
            QCOMPARE(field.value(), 20);
            field.setFocus();
            field.selectAll();
            QTest::keyClicks(&field, "-7");
            QTest::keyClick(&field, Qt::Key_Return);
            QCOMPARE(slider.value(), -7);
            const auto& model = dynamic_cast<toolkit::NumberField&>(
                window.model(WindowUnderTest::ColorSetting, qPrintable(name + "Field")));
            QCOMPARE(model.integerValue(), -7);
        }
    }

    void returnInANumberFieldOnlyCommitsTheNumber() {
        WindowUnderTest window;
        openAdjustments(window);
        auto& field = window.widget<QSpinBox>("redField");
        field.setFocus();
        field.selectAll();
        QTest::keyClicks(&field, "5");
        QTest::keyClick(&field, Qt::Key_Return);
        QCOMPARE(window.widget<QSlider>("redSlider").value(), 5);
        QVERIFY(window.dialog().isVisible());
        QVERIFY(window.ticket().isEmpty());
    }

    void thePreviewFollowsEachAdjustment() {
        WindowUnderTest window;
        openAdjustments(window);
        for (const QString name : kAdjustments) {
            const QImage before = preview(window);
            QVERIFY(!before.isNull());
            auto& slider = window.widget<QSlider>(name + "Slider");
            slider.setFocus();
            QTest::keyClick(&slider, Qt::Key_Home);
            QVERIFY2(preview(window) != before, qPrintable(name));
        }
    }

    void revertSwitchesTheEnhancementOff() {
        WindowUnderTest window;
        openAdjustments(window);
        auto& slider = window.widget<QSlider>("redSlider");
        slider.setFocus();
        QTest::keyClick(&slider, Qt::Key_End);
        window.click("revertButton");
        QVERIFY(!slider.isEnabled());
        QVERIFY(!slider.accessibleDescription().isEmpty());
    }

    void disabledTextsBearThePalettesDisabledColor() {
        WindowUnderTest window;
        window.open(WindowUnderTest::ColorSetting);
        openAdvanced(window);
        auto& label = window.widget<QLabel>("redLabel");
        const QPalette palette = label.palette();
        QVERIFY(!window.widget<QSlider>("redSlider").isEnabled());
        QCOMPARE(palette.color(QPalette::Active, QPalette::WindowText),
                 palette.color(QPalette::Disabled, QPalette::WindowText));
        window.click("colorEnhanceButton");
        QVERIFY(label.palette().color(QPalette::Active, QPalette::WindowText) !=
                label.palette().color(QPalette::Disabled, QPalette::WindowText));
    }

    void everyControlHasAnAccessibleName() {
        WindowUnderTest window;
        for (const auto page : {WindowUnderTest::General, WindowUnderTest::PrintSetting, WindowUnderTest::ColorSetting,
                                WindowUnderTest::Summary}) {
            window.open(page);
            for (QWidget* widget : window.page().findChildren<QWidget*>()) {
                if (!widget->isVisible() || widget->focusPolicy() == Qt::NoFocus ||
                    widget->objectName().startsWith("qt_"))
                    continue;
                QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(widget);
                QVERIFY2(interface != nullptr && !interface->text(QAccessible::Name).isEmpty(),
                         qPrintable(widget->objectName() + " " + widget->metaObject()->className()));
                if (qobject_cast<QComboBox*>(widget) != nullptr) // its own name is what is chosen in it
                    QVERIFY2(!interface->relations(QAccessible::Label).isEmpty(), qPrintable(widget->objectName()));
            }
        }
    }

    void noLetterIsAMnemonicTwice() {
        for (const std::string language : {"en", "ja", "de", "fr", "es", "zh_CN"}) {
            WindowUnderTest window({.languages = {language}});
            const auto& tabs = *window.dialog().findChild<QTabWidget*>("tabs");
            for (const auto page : {WindowUnderTest::General, WindowUnderTest::PrintSetting,
                                    WindowUnderTest::ColorSetting, WindowUnderTest::Summary}) {
                window.open(page);
                QStringList texts;
                for (int index = 0; index < tabs.count(); ++index)
                    texts << tabs.tabText(index);
                for (const QAbstractButton* button : window.dialog().findChildren<QAbstractButton*>())
                    if (button->isVisible())
                        texts << button->text();
                for (const QLabel* label : window.dialog().findChildren<QLabel*>())
                    if (label->isVisible() && label->buddy() != nullptr)
                        texts << label->text();
                QMap<QChar, QString> owners;
                for (const QString& text : texts) {
                    const QString shown = QString(text).remove("&&");
                    const QChar letter = shown.contains('&') ? shown[shown.indexOf('&') + 1].toUpper() : QChar();
                    if (letter.isNull())
                        continue;
                    QVERIFY2(!owners.contains(letter),
                             qPrintable(QString::fromStdString(language) + ": " + text + " and " + owners[letter]));
                    owners[letter] = text;
                }
                QVERIFY(owners.size() > 4);
            }
        }
    }

    void theFocusIsOnAControlOfEachPage() {
        WindowUnderTest window;
        const auto& tabs = *window.dialog().findChild<QTabWidget*>("tabs");
        for (int page = 0; page < 4; ++page) {
            QCOMPARE(tabs.currentIndex(), page);
            const QWidget* focused = window.dialog().focusWidget();
            QVERIFY2(focused != nullptr && (focused->focusPolicy() & Qt::TabFocus) && focused->isVisible(),
                     qPrintable(QString::number(page)));
            QTest::keyClick(window.dialog().focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
        }
        QCOMPARE(tabs.currentIndex(), 0);
    }
};

QTEST_MAIN(WindowPanelsTest)
#include "window_panels_test.moc"
