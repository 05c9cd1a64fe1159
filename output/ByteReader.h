#pragma once

#include <QByteArray>
#include <QtGlobal>

/// Reads numbers one after the other from bytes that it does not own. Whatever lies behind the end
/// reads as 0, so that a count or an offset out of a datagram never leads outside.
class ByteReader
{
public:
    /// `size` is in bytes; a null `data` or a negative `size` reads as empty.
    ByteReader(const char* data, int size);

    /// Goes to `offset` bytes from the start, limited to 0..size.
    void seek(int offset);
    /// Passes over `count` bytes, at most up to the end; a negative count does nothing.
    void skip(int count);
    int position() const { return m_position; }
    /// Bytes left up to the end.
    int remaining() const { return m_size - m_position; }

    quint8 u8();
    quint16 u16le();
    quint32 u32le();
    quint64 u64le();
    quint16 u16be();
    quint32 u32be();

    /// Copies a NUL-terminated text to `target`, which holds `limit` + 1 bytes: at most `limit`
    /// bytes of text and always a NUL. Goes on behind the text's own NUL even where it was cut, and
    /// to the end where none comes.
    void text(char* target, int limit);
    /// The next `count` bytes, or those that are left.
    QByteArray bytes(int count);

private:
    quint64 little(int width);
    quint64 big(int width);

    const char* m_data = nullptr; // not owned
    int m_size = 0;
    int m_position = 0;
};
