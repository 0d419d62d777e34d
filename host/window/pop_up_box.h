#pragma once

#include <QComboBox>
#include <QHash>

namespace host {

/// A pop-up list that always is as wide as its items need it. The list that pops up, a window of several widgets, is
/// made when it is first asked for. A click on a disabled row commits nothing.
class PopUpBox : public QComboBox {
public:
    explicit PopUpBox(QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
    void showPopup() override;
    /// Another list, borrowed, that has mostly the same items in the same font: their widths are taken from it.
    void takeWidthsFrom(const PopUpBox& other) { other_ = &other; }

protected:
    void changeEvent(QEvent* event) override;

private:
    void forgetSize();
    [[nodiscard]] int widthOfText(const QString& text) const;

    mutable QSize size_;                 // invalid until it is asked for
    mutable QHash<QString, int> widths_; // that were measured
    const PopUpBox* other_ = nullptr;
    bool hasPoppedUp_ = false;
};

} // namespace host
