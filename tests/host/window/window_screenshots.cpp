// Writes a picture of every page of the dialog, of an alert and of the help, light and dark, in every language of the
// window, and looks for what is cut or overlaps: window_screenshots FOLDER [POINTS...], the sizes of the font.

#include "layout_check.h"
#include "window_under_test.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFileInfo>
#include <QSlider>
#include <QStyleFactory>
#include <QTextBrowser>
#include <QThreadPool>

#include <algorithm>
#include <cstdio>

namespace {

QPalette darkPalette() {
    const QColor window(53, 53, 53), base(35, 35, 35), text(235, 235, 235), faint(127, 127, 127), link(42, 130, 218);
    QPalette palette(window);
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::Button, window);
    palette.setColor(QPalette::ToolTipBase, base);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, faint);
    }
    palette.setColor(QPalette::PlaceholderText, faint);
    palette.setColor(QPalette::Highlight, link);
    palette.setColor(QPalette::HighlightedText, Qt::black);
    palette.setColor(QPalette::Link, link);
    return palette;
}

int pictures = 0;
QStringList problems;

void takePicture(QWidget& window, const QString& path) {
    QThreadPool::globalInstance()->waitForDone(); // until the document was read
    const QStringList faults = tests::faultsOfLayout(window);
    window.grab().save(path);
    ++pictures;
    for (const QString& problem : faults)
        problems << QFileInfo(path).baseName() + QStringLiteral(": ") + problem;
}

void takePictures(const QDir& folder, const std::string& language, bool isDark, const QString& points) {
    static const QPalette light = QApplication::palette();
    QApplication::setPalette(isDark ? darkPalette() : light);
    tests::WindowUnderTest window({.languages = {language}});
    const auto path = [&](const char* page) {
        return folder.filePath(QString::fromLatin1(page) + u'-' + QString::fromStdString(language) +
                               (isDark ? "-dark" : "") + (points.isEmpty() ? QString() : u'-' + points) + ".png");
    };
    takePicture(window.dialog(), path("general"));
    window.open(tests::WindowUnderTest::PrintSetting);
    window.pick("mediaTypePopup", 3);
    takePicture(window.dialog(), path("print"));
    window.click("optionButton");
    takePicture(window.dialog(), path("print-advanced"));
    window.open(tests::WindowUnderTest::ColorSetting);
    window.click("colorEnhanceButton");
    takePicture(window.dialog(), path("color"));
    window.click("optionButton");
    window.widget<QSlider>("brightnessSlider").setSliderPosition(6);
    window.widget<QSlider>("redSlider").setSliderPosition(-8);
    takePicture(window.dialog(), path("color-advanced"));
    window.open(tests::WindowUnderTest::Summary);
    takePicture(window.dialog(), path("summary"));
    window.answer({[&](QWidget& alert) {
        takePicture(alert, path("alert"));
        static_cast<QDialog&>(alert).reject();
    }});
    window.click("printButton");
    window.open(tests::WindowUnderTest::ColorSetting);
    window.click("helpButton");
    takePicture(*window.dialog().findChild<QTextBrowser*>()->window(), path("help"));
}

} // namespace

int main(int argumentCount, char* arguments[]) {
    QApplication application(argumentCount, arguments);
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    if (argumentCount < 2 || !QDir().mkpath(arguments[1]))
        qFatal("Usage: window_screenshots FOLDER [POINTS...]");
    const QDir folder(arguments[1]);
    QFont font = QApplication::font();
    for (int index = 2; index < std::max(argumentCount, 3); ++index) {
        const QString points = argumentCount == 2 ? QString() : QString::fromLatin1(arguments[index]);
        if (!points.isEmpty())
            font.setPointSize(points.toInt());
        QApplication::setFont(font);
        for (const bool isDark : {false, true})
            for (const std::string language : {"en", "ja", "de", "fr", "es", "zh_CN"})
                takePictures(folder, language, isDark, points);
    }
    for (const QString& problem : problems)
        std::fprintf(stderr, "%s\n", qPrintable(problem));
    std::printf("%d pictures, %d problems of layout\n", pictures, static_cast<int>(problems.size()));
    return problems.isEmpty() ? EXIT_SUCCESS : EXIT_FAILURE;
}
