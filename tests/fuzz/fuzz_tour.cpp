/* SPDX-License-Identifier: MIT */
/* Any bytes as the script of a tour: read, and those of its steps carried out that need neither a bus nor another program. The
 * fields that they set are in register files that were there before.
 */
#include "board/tour/CTour.h"
#include "tests/fuzz/expect.h"
#include "tests/fuzz/fuzz_target.h"
#include "tests/fuzz/memory_board.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QMap>

namespace
{

/* The register files of a board, by name. */
QMap<QString, QByteArray> register_files(const QDir& folder)
{
    QMap<QString, QByteArray> files;
    for (const QString& name : folder.entryList(QDir::Files)) {
        QFile file(folder.filePath(name));
        EXPECT(file.open(QIODevice::ReadOnly));
        files[name] = file.readAll();
    }
    return files;
}

void put_back(const QDir& folder, const QMap<QString, QByteArray>& files)
{
    for (auto it = files.begin(); it != files.end(); ++it) {
        QFile file(folder.filePath(it.key()));
        EXPECT(file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(it.value()) == it->size());
    }
}

void carry_out(CTour& tour, const QString& script)
{
    const QStringList kept = {QStringLiteral("say"), QStringLiteral("set")};
    for (const CTour::SStep& step : CTour::read(script)) {
        EXPECT(step.iLine > 0 && !step.cText.isEmpty());
        if (kept.contains(step.cText.section(QLatin1Char(' '), 0, 0)))
            (void)tour.carryOut(step.cText);
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static int count = 0;
    static QCoreApplication application(count, nullptr);
    static memory_board board;
    static const QDir folder(board.path() + QStringLiteral("/" BOARD_CNFS));
    static const QMap<QString, QByteArray> files = register_files(folder);
    const QString script = board.path() + QStringLiteral("-script");
    QFile file(script);
    EXPECT(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    EXPECT(file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size)) ==
           static_cast<qint64>(size));
    file.close();

    CTour tour(QDBusConnection(QStringLiteral("none")), board.state(), board.path(), [](const QString&) {});
    carry_out(tour, script);
    const QMap<QString, QByteArray> after = register_files(folder);
    EXPECT(after.keys() == files.keys());
    if (after != files)
        put_back(folder, files);
    return INPUT_TAKEN;
}
