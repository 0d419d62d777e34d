#pragma once

#include <QComboBox>

namespace host {

/// A pop-up list that always is as wide as its items need it. The list that pops up, a window of several widgets, is
/// made when it is first asked for. A click on a disabled row commits nothing.
class PopUpBox : public QComboBox {
public:
    explicit PopUpBox(QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
    void showPopup() override;

protected:
    void changeEvent(QEvent* event) override;

private:
    void forgetSize();
    [[nodiscard]] QSize largestItem() const;

    mutable QSize size_;      // invalid until it is asked for
    mutable QSize iconsSize_; // that it was found with
    bool hasPoppedUp_ = false;
};

} // namespace host
