#include "platform/linux/ui/image_view.h"

namespace platform::linux_backend {

ScalingImageLabel::ScalingImageLabel() { setAlignment(Qt::AlignCenter); }

void ScalingImageLabel::setSource(QPixmap pixmap) {
    source_ = std::move(pixmap);
    showScaled();
}

void ScalingImageLabel::setScaling(ui::ImageScaling scaling) {
    scaling_ = scaling;
    showScaled();
}

void ScalingImageLabel::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    showScaled();
}

// Until it is given a scaling, an image is drawn at its own size.
void ScalingImageLabel::showScaled() {
    if (source_.isNull() || !scaling_) {
        setPixmap(source_);
        return;
    }
    switch (*scaling_) {
        case ui::ImageScaling::ProportionallyUpOrDown:
            setPixmap(source_.scaled(contentsRect().size(), Qt::KeepAspectRatio, Qt::SmoothTransformation));
            return;
    }
}

QtImageView::QtImageView(const ui::Rect& frame) : QtViewOf<ui::ImageView>(new ScalingImageLabel) {
    setFrame(frame);
}

void QtImageView::setImage(std::shared_ptr<ui::Image> image) {
    auto* qtImage = dynamic_cast<QtImage*>(image.get());
    static_cast<ScalingImageLabel*>(widget())->setSource(qtImage ? qtImage->pixmap() : QPixmap());
}

void QtImageView::setImageScaling(ui::ImageScaling scaling) {
    static_cast<ScalingImageLabel*>(widget())->setScaling(scaling);
}

}  // namespace platform::linux_backend
