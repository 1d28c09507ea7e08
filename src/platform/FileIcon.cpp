#include "platform/FileIcon.h"

#include "platform/Picture.h"
#include "platform/RunTimeError.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>

#include <algorithm>

namespace regalon {

namespace {

class FileIconEngine : public QIconEngine {
public:
    explicit FileIconEngine(const QString& file) : m_file(file) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        const qreal scale = painter->device()->devicePixelRatio();
        QPixmap shown = scaledPixmap((QSizeF(rect.size()) * scale).toSize(), mode, state, scale);
        shown.setDevicePixelRatio(scale);
        const QRect place = QStyle::alignedRect(Qt::LayoutDirectionAuto, Qt::AlignCenter,
                                                shown.deviceIndependentSize().toSize(), rect);
        painter->drawPixmap(place.topLeft(), shown);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return scaledPixmap(size, mode, state, 1);
    }

    /// `size` in device pixels. Never larger than the file's own picture at this density.
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal /*scale*/) override {
        Q_UNUSED(state)
        const QSize logical = picture().size();
        if (logical.isEmpty() || size.isEmpty())
            return {};
        const qreal wanted =
            std::min(qreal(size.width()) / logical.width(), qreal(size.height()) / logical.height());
        QPixmap found = picture().pixmap(wanted);
        if (found.width() > size.width() || found.height() > size.height())
            found = found.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        if (mode == QIcon::Normal)
            return found;
        const QStyleOption option;
        return QApplication::style()->generatedIconPixmap(mode, found, &option);
    }

    /// The one that is cheap to give. Window managers ask for every size there is.
    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override { return {picture().size()}; }
    QSize actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return QIconEngine::actualSize(size, mode, state);
    }
    bool isNull() override { return picture().isEmpty(); }
    QString key() const override { return QStringLiteral("regalon-file"); }
    QIconEngine* clone() const override { return new FileIconEngine(*this); }

private:
    const Picture& picture() {
        if (!m_read) {
            m_read = true;
            try {
                m_picture = Picture::read(m_file);
            } catch (const RunTimeError&) {
                // An icon that is missing is no reason to stop; its button has a caption.
            }
        }
        return m_picture;
    }

    QString m_file;
    Picture m_picture;
    bool m_read = false;
};

}  // namespace

QIcon fileIcon(const QString& file) {
    return QIcon(new FileIconEngine(file));
}

}  // namespace regalon
