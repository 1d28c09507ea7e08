#pragma once

#include <QByteArray>
#include <QPixmap>
#include <QSize>
#include <QString>

#include <memory>

namespace regalon {

/// A loaded picture, shared and unchangeable. A picture of several sizes (.ico) has the logical size of its
/// smallest; the larger ones serve high-density screens and zoom.
class Picture {
public:
    Picture();
    ~Picture();
    Picture(const Picture&);
    Picture& operator=(const Picture&);

    /// Loads an .ico, .bmp, .png, .jpg or .gif by a path of the system. An empty path gives the empty
    /// picture. Decoded pictures are kept by path and read again when the file has changed (time or size), so
    /// that a plan of a thousand icons costs a look at each file. Raises 53 (no such file), 76 (no such
    /// folder or drive), 75 (a folder, or not readable), 481 (not a picture).
    static Picture load(const QString& path);
    /// As load(), but always from the file and without keeping the picture.
    static Picture read(const QString& path);
    /// The picture of a file's contents. Raises 481.
    static Picture fromBytes(const QByteArray& bytes);
    static void clearCache();

    bool isEmpty() const { return !m_data; }
    /// Logical pixels; (0, 0) for the empty picture.
    QSize size() const;
    int widthTwips() const;
    int heightTwips() const;
    /// The size that is best drawn over `scale` device pixels a logical one: the smallest that is large
    /// enough, else the largest there is.
    QPixmap pixmap(qreal scale) const;

    struct Data;

private:
    explicit Picture(std::shared_ptr<const Data> data);

    std::shared_ptr<const Data> m_data;
};

/// A folder of pictures for the time that many of them are looked at: the way to the folder is walked once,
/// which is most of what a look at a known file costs.
class PictureFolder {
public:
    /// In the system's form, without a separator at the end. A folder that is not there fails at each load().
    explicit PictureFolder(const QString& folder);
    ~PictureFolder();
    PictureFolder(const PictureFolder&) = delete;
    PictureFolder& operator=(const PictureFolder&) = delete;

    /// Picture::load() of the file in this folder.
    Picture load(const QString& name) const;
    /// Path of the file in the system's form.
    QString path(const QString& name) const { return m_folder + name; }

private:
    QString m_folder;   ///< with the separator
    QByteArray m_file;  ///< on this machine, with the separator
    int m_descriptor = -1;
};

}  // namespace regalon
