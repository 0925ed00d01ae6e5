/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_TOUR_CTOUR_H
#define HALDEND_BOARD_TOUR_CTOUR_H

#include <QDBusConnection>
#include <QDBusMessage>
#include <QHash>
#include <QImage>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

class CBoard;

/// Carries out the steps of a tour, such as board/tour.txt, on a daemon that is at work. The script itself says what
/// the steps mean.
class CTour : public QObject
{
    Q_OBJECT

public:
    /// Takes a line that the tour shows.
    using CPrinter = std::function<void(const QString&)>;

    struct SStep {
        int iLine; ///< in the script, from 1
        QString cText;
    };

    /// The steps of a script, without comments and empty lines. None if it can't be read.
    static QVector<SStep> read(const QString& rcScript);

    /// The connection is to the daemon's bus, the board the daemon's; both outlive the tour. Pictures and files go to
    /// rcPictures, which exists.
    CTour(const QDBusConnection& rcConnection, CBoard& rcBoard, const QString& rcPictures, CPrinter fnPrint);

    /// Carries out a step, and returns when its effect is there. Empty, or what is wrong.
    QString carryOut(const QString& rcStep);

    /// The last picture of a name; a null image if there is none.
    QImage picture(const QString& rcName) const { return m_acPictures.value(rcName); }

    /// Paths of all pictures, in the order in which they were taken.
    QStringList files() const { return m_cFiles; }

private slots:
    void onSignal(const QDBusMessage& rcMessage);

private:
    struct SCommand {
        const char* pszName;
        QString (CTour::*pfnCarryOut)(const QString& rcRest);
    };
    static const SCommand COMMANDS[10];

    QString say(const QString& rcText);
    QString call(const QString& rcRest);
    QString wait(const QString& rcRest);
    QString board(const QString& rcRest);
    QString waitForFrames(const QString& rcRest);
    QString waitForSignal(const QString& rcRest);
    QString setField(const QString& rcRest);
    QString takePicture(const QString& rcName);
    QString waitForPicture(const QString& rcName);
    QString takeShot(const QString& rcName);

    QStringList words(const QString& rcText) const;
    QString ask(const QStringList& rcWords, QString& rcAnswer);
    QString keep(const QString& rcName, const QImage& rcPicture);

    QDBusConnection m_cConnection;
    CBoard& m_rcBoard;
    QString m_cPictures;
    CPrinter m_fnPrint;
    QStringList m_cSignals; ///< that came and weren't waited for
    QHash<QString, QImage> m_acPictures;
    QImage m_cShot;
    QStringList m_cFiles;
};

#endif
