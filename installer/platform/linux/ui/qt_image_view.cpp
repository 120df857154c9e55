#include "platform/linux/ui/qt_image_view.h"

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

void ScalingImageLabel::showScaled() {
    if (source_.isNull()) {
        setPixmap(QPixmap());
        return;
    }
    QSize room = contentsRect().size();
    bool fits = source_.width() <= room.width() && source_.height() <= room.height();
    switch (scaling_) {
        case ui::ImageScaling::None:
            setPixmap(source_);
            return;
        case ui::ImageScaling::AxesIndependently:
            setPixmap(source_.scaled(room, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
            return;
        case ui::ImageScaling::ProportionallyDown:
            if (fits) {
                setPixmap(source_);
                return;
            }
            break;
        case ui::ImageScaling::ProportionallyUpOrDown:
            break;
    }
    setPixmap(source_.scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation));
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
