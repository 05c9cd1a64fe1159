#pragma once

#include <QImage>
#include <QString>
#include <QStringList>

#include <vector>

/// A directory of picture files that are the frames of a film, in natural order of their names.
/// Whatever files lie in it count as frames; they are read anew each time they are asked for.
class FrameDirectory
{
public:
    /// Lists the files of `path`. False, and no frames, for an empty path (which is not the working
    /// directory), a directory without files or none at all.
    [[nodiscard]] bool open(const QString& path);
    void close();
    int count() const { return m_names.size(); }
    /// File names without the directory.
    const QStringList& names() const { return m_names; }
    /// The picture of a frame from 0 on; a null one where it can't be read, which the log tells
    /// once for each file since open().
    QImage read(int frame);

private:
    QString m_path; // with "/" behind
    QStringList m_names;
    std::vector<bool> m_isReported; // by frame
};
