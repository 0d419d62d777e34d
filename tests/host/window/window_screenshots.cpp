// Writes a picture of every page of the dialog: window_screenshots FOLDER

#include "window_under_test.h"

#include <QApplication>
#include <QDir>
#include <QStyleFactory>

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

} // namespace

int main(int argumentCount, char* arguments[]) {
    QApplication application(argumentCount, arguments);
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    if (argumentCount != 2 || !QDir().mkpath(arguments[1]))
        qFatal("Usage: window_screenshots FOLDER");
    const QDir folder(arguments[1]);
    const QPalette light = QApplication::palette();
    const char* const kPages[] = {"general", "print", "color", "summary"};
    for (const bool isDark : {false, true})
        for (const std::string language : {"en", "ja", "de", "fr", "es", "zh_CN"}) {
            QApplication::setPalette(isDark ? darkPalette() : light);
            tests::WindowUnderTest window({.languages = {language}});
            for (int page = 0; page < 4; ++page) {
                window.open(static_cast<tests::WindowUnderTest::Page>(page));
                if (page == tests::WindowUnderTest::PrintSetting)
                    window.pick("mediaTypePopup", 3);
                if (page == tests::WindowUnderTest::ColorSetting)
                    window.click("colorEnhanceButton");
                const auto grab = [&](const QString& suffix) {
                    QTest::qWait(50);
                    const QString name =
                        QStringLiteral("%1-%2%3-%4.png")
                            .arg(kPages[page], QString::fromStdString(language), isDark ? "-dark" : "", suffix);
                    window.dialog().grab().save(folder.filePath(name));
                };
                grab("1");
                if (page == tests::WindowUnderTest::PrintSetting || page == tests::WindowUnderTest::ColorSetting) {
                    window.click("optionButton");
                    grab("2");
                }
            }
        }
    return 0;
}
