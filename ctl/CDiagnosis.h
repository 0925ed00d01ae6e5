/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_CTL_CDIAGNOSIS_H
#define HALDEND_CTL_CDIAGNOSIS_H

#include <QJsonArray>
#include <QString>

class CCommandRun;

/// Collects the findings of doctor: certain faults, and possible causes that the bus doesn't tell.
class CDiagnosis
{
public:
    explicit CDiagnosis(CCommandRun& rcRun) : m_rcRun(rcRun) {}

    /// Names the subject of the next findings, such as "text 3".
    void lookAt(const QString& rcTopic) { m_cTopic = rcTopic; }

    /// Something is wrong: a sentence, with what to do. pszCode is its name for programs.
    void wrong(const char* pszCode, const QString& rcText);

    /// It can't be asked for, but may be the cause: a sentence, with how to find out.
    void possible(const char* pszCode, const QString& rcText);

    /// Sums up, and sets the command's status.
    void finish();

private:
    void add(const char* pszCode, const QString& rcText, bool bKnown);

    CCommandRun& m_rcRun;
    QString m_cTopic;
    QJsonArray m_cFindings;
    int m_iWrong = 0;
};

// Each of these looks at one thing. DoctorText.cpp, DoctorVideo.cpp, DoctorBoard.cpp
void diagnoseText(CCommandRun& rcRun, CDiagnosis& rcDiagnosis, int iHandle);
void diagnoseTexts(CCommandRun& rcRun, CDiagnosis& rcDiagnosis,
                   int iLast); ///< those that are meant to be seen
void diagnosePicture(CCommandRun& rcRun, CDiagnosis& rcDiagnosis);
void diagnoseRecording(CCommandRun& rcRun, CDiagnosis& rcDiagnosis);
void diagnoseBoard(CCommandRun& rcRun, CDiagnosis& rcDiagnosis);

#endif
