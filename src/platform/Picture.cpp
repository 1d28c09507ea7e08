#include "platform/Picture.h"

#include "platform/IconBitmap.h"
#include "platform/Paths.h"
#include "platform/RunTimeError.h"
#include "platform/Twips.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QImage>
#include <QImageReader>
#include <QList>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <utility>

namespace regalon {

/// The sizes of a picture, smallest first. Those behind the first are decoded when a screen asks for them:
/// most screens never do.
struct Picture::Data {
    struct Size {
        QSize size;
        int number = 0;
        QPixmap pixmap;
        bool decoded = false;
    };

    QByteArray bytes;
    mutable QList<Size> sizes;
};

namespace {

using Data = Picture::Data;

/// A cache past this many pictures starts anew; a plan has a few hundred different ones.
constexpr qsizetype MaxCached = 4096;
/// Larger files are photographs, which are shown once and not kept.
constexpr qsizetype MaxCachedBytes = 1 << 20;
constexpr int IconHeaderBytes = 6;
constexpr int IconEntryBytes = 16;

struct CacheEntry {
    QByteArray file;
    qsizetype nameAt = 0;  ///< where the name begins behind the folder's path
    timespec modified{};
    off_t bytes = 0;
    ino_t inode = 0;
    Picture picture;

    bool isOf(const struct stat& now) const {
        return now.st_mtim.tv_sec == modified.tv_sec && now.st_mtim.tv_nsec == modified.tv_nsec &&
               now.st_size == bytes && now.st_ino == inode;
    }
};

QHash<QString, CacheEntry>& cache() {
    static QHash<QString, CacheEntry> entries;
    return entries;
}

bool isIcon(const QByteArray& bytes) {
    return bytes.startsWith(QByteArray("\0\0\1\0", 4));
}

QImage iconImage(const QByteArray& bytes, int number) {
    QImage image = iconBitmap(bytes, number);
    if (!image.isNull())
        return image;
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, "ico");
    return reader.jumpToImage(number) ? reader.read() : QImage();
}

/// Sizes by the directory at the file's head, smallest first. Where a size stands there in several depths of
/// colour, the deepest counts.
QList<Data::Size> iconSizes(const QByteArray& bytes) {
    struct Found {
        Data::Size size;
        int depth;
    };
    const auto byteAt = [&bytes](qsizetype at) { return static_cast<unsigned char>(bytes[at]); };
    const int count = byteAt(4) | (byteAt(5) << 8);
    QList<Found> found;
    for (int number = 0; number < count; ++number) {
        const qsizetype at = IconHeaderBytes + qsizetype{number} * IconEntryBytes;
        if (at + IconEntryBytes > bytes.size())
            break;
        const int width = byteAt(at) == 0 ? 256 : byteAt(at);
        const int height = byteAt(at + 1) == 0 ? 256 : byteAt(at + 1);
        const int depth = byteAt(at + 6) | (byteAt(at + 7) << 8);
        found.append({{QSize(width, height), number, QPixmap(), false}, depth});
    }
    std::stable_sort(found.begin(), found.end(), [](const Found& a, const Found& b) {
        const int areaA = a.size.size.width() * a.size.size.height();
        const int areaB = b.size.size.width() * b.size.size.height();
        return areaA != areaB ? areaA < areaB : a.depth > b.depth;
    });
    QList<Data::Size> sizes;
    for (const Found& one : std::as_const(found)) {
        if (sizes.isEmpty() || sizes.last().size != one.size.size)
            sizes.append(one.size);
    }
    return sizes;
}

void decode(const QByteArray& bytes, Data::Size& size) {
    size.pixmap = QPixmap::fromImage(iconImage(bytes, size.number));
    size.decoded = true;
}

std::shared_ptr<Data> decoded(const QByteArray& bytes) {
    auto data = std::make_shared<Data>();
    if (isIcon(bytes) && bytes.size() >= IconHeaderBytes) {
        data->sizes = iconSizes(bytes);
        if (!data->sizes.isEmpty())
            decode(bytes, data->sizes.first());
        if (data->sizes.size() > 1)
            data->bytes = bytes;
    } else {
        const QPixmap pixmap = QPixmap::fromImage(QImage::fromData(bytes));
        data->sizes.append({pixmap.size(), 0, pixmap, true});
    }
    if (data->sizes.isEmpty() || data->sizes.first().pixmap.isNull())
        throw RunTimeError(RunTime::InvalidPicture);
    data->sizes.first().size = data->sizes.first().pixmap.size();
    return data;
}

QByteArray contents(const QString& path) {
    QFile file;
    Paths::open(file, path, QIODevice::ReadOnly);
    return file.readAll();
}

/// The contents of a path whose file is known. The system's path is walked again only to tell what is wrong.
QByteArray contents(const QString& path, const QString& found) {
    QFile file(found);
    return !found.isEmpty() && file.open(QIODevice::ReadOnly) ? file.readAll() : contents(path);
}

}  // namespace

Picture::Picture() = default;
Picture::~Picture() = default;
Picture::Picture(const Picture&) = default;
Picture& Picture::operator=(const Picture&) = default;
Picture::Picture(std::shared_ptr<const Data> data) : m_data(std::move(data)) {}

Picture Picture::read(const QString& path) {
    if (path.isEmpty())
        return {};
    return fromBytes(contents(path));
}

Picture Picture::fromBytes(const QByteArray& bytes) {
    return Picture(decoded(bytes));
}

Picture Picture::load(const QString& path) {
    if (path.isEmpty())
        return {};
    struct stat now {};
    const auto known = cache().constFind(path);
    if (known != cache().constEnd() && ::stat(known->file.constData(), &now) == 0 && known->isOf(now))
        return known->picture;

    const QString found = Paths::toFile(path);
    const QByteArray file = QFile::encodeName(found);
    // Looked at before the reading: a change in between is then seen the next time.
    const bool keep = ::stat(file.constData(), &now) == 0 && now.st_size <= MaxCachedBytes;
    const Picture picture(decoded(contents(path, found)));
    if (cache().size() >= MaxCached)
        cache().clear();
    if (keep)
        cache().insert(path,
                       {file, file.lastIndexOf('/') + 1, now.st_mtim, now.st_size, now.st_ino, picture});
    return picture;
}

void Picture::clearCache() {
    cache().clear();
}

PictureFolder::PictureFolder(const QString& folder)
    : m_folder(folder + QLatin1Char('\\')), m_file(QFile::encodeName(Paths::toFile(folder)) + '/') {
    m_descriptor = ::open(m_file.constData(), O_PATH | O_DIRECTORY | O_CLOEXEC);
}

PictureFolder::~PictureFolder() {
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

Picture PictureFolder::load(const QString& name) const {
    const QString path = m_folder + name;
    struct stat now {};
    const auto known = cache().constFind(path);
    if (known != cache().constEnd() && known->nameAt == m_file.size() && known->file.startsWith(m_file) &&
        ::fstatat(m_descriptor, known->file.constData() + known->nameAt, &now, 0) == 0 && known->isOf(now))
        return known->picture;
    return Picture::load(path);
}

QSize Picture::size() const {
    return m_data ? m_data->sizes.first().size : QSize(0, 0);
}

int Picture::widthTwips() const {
    return toTwips(size().width());
}

int Picture::heightTwips() const {
    return toTwips(size().height());
}

QPixmap Picture::pixmap(qreal scale) const {
    if (!m_data)
        return {};
    QList<Data::Size>& sizes = m_data->sizes;
    const qreal wanted = sizes.first().size.width() * scale - 0.5;
    auto best = std::find_if(sizes.begin(), sizes.end(),
                             [wanted](const Data::Size& one) { return one.size.width() >= wanted; });
    if (best == sizes.end())
        best = std::prev(sizes.end());
    if (!best->decoded)
        decode(m_data->bytes, *best);
    return best->pixmap.isNull() ? sizes.first().pixmap : best->pixmap;
}

}  // namespace regalon
