/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_COMPARE_CBOARDRECORD_H
#define HALDEND_TESTS_COMPARE_CBOARDRECORD_H

#include <QByteArray>
#include <QImage>
#include <QString>

class CBoard;

/// Writes down what a board holds, in a form that doesn't depend on the order of bytes of the program's processor.
///
/// Files of the folder: fpga/NAME, the FPGA's memory, a byte each; lime/NAME, the display controller's memory as
/// little-endian words; trace/NAME, the operations since the last one; pictures/NAME.ppm, the picture's pixels.
/// Memory files are sparse.
class CBoardRecord
{
public:
    /// The folder is emptied, the board's trace switched on. Throws std::runtime_error, as do all functions.
    CBoardRecord(CBoard& rcBoard, const QString& rcFolder);

    /// Takes the memories and the trace, to be written by the next add(): an emulated program needs seconds for a picture.
    void take();

    /// Adds what was taken, and the picture.
    void add(const QString& rcName, const QImage& rcPicture);

    /// Adds a file, without the line of a register file that has its date.
    void addFile(const QString& rcFile);

private:
    QByteArray contents(const char* pszFile) const;
    QByteArray words(QByteArray cMemory) const;
    QByteArray trace() const;
    void write(const QString& rcName, const QByteArray& rcBytes) const;

    CBoard& m_rcBoard;
    QString m_cFolder;
    QByteArray m_cFpga;
    QByteArray m_cLime;
    QByteArray m_cTrace;
};

#endif
