// Image views on Qt: a QLabel drawing a pixmap scaled to its frame, centred.
#pragma once

#include <QLabel>
#include <QPixmap>

#include <optional>

#include "platform/linux/ui/view.h"
#include "platform/ui/image_view.h"

namespace platform::linux_backend {

// An image as Qt holds it.
class QtImage final : public ui::Image {
public:
    explicit QtImage(QPixmap pixmap) : pixmap_(std::move(pixmap)) {}
    const QPixmap& pixmap() const { return pixmap_; }

private:
    QPixmap pixmap_;
};

// The QLabel behind a ui::ImageView: it rescales its image whenever the image, the scaling or its
// size changes.
class ScalingImageLabel final : public QLabel {
public:
    ScalingImageLabel();
    void setSource(QPixmap pixmap);
    void setScaling(ui::ImageScaling scaling);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void showScaled();

    QPixmap source_;
    std::optional<ui::ImageScaling> scaling_;
};

class QtImageView final : public QtViewOf<ui::ImageView> {
public:
    explicit QtImageView(const ui::Rect& frame);

    void setImage(std::shared_ptr<ui::Image> image) override;
    void setImageScaling(ui::ImageScaling scaling) override;
};

}  // namespace platform::linux_backend
