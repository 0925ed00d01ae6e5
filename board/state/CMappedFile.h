/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_STATE_CMAPPEDFILE_H
#define HALDEND_BOARD_STATE_CMAPPEDFILE_H

#include <QFile>
#include <QString>

/// A file of a board, mapped whole and shared: other programs see a store at once.
class CMappedFile
{
public:
    CMappedFile() = default;
    ~CMappedFile() { close(); }

    CMappedFile(const CMappedFile&) = delete;
    CMappedFile& operator=(const CMappedFile&) = delete;

    /// Maps the first iBytes bytes. False if the file is missing or shorter; rcError says so.
    [[nodiscard]] bool open(const QString& rcPath, qint64 iBytes, QString& rcError);
    void close();

    /// The mapped bytes, null when closed.
    uchar* data() const { return m_pu8Data; }

private:
    QFile m_cFile;
    uchar* m_pu8Data = nullptr;
};

#endif
