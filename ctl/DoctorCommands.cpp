/* SPDX-License-Identifier: MIT */
/* haldenctl doctor: what is wrong, a sentence each. */
#include "ctl/CCommandRun.h"
#include "ctl/CDiagnosis.h"
#include "ctl/CFailure.h"
#include "ctl/CommandHandlers.h"
#include "ctl/Texts.h"

void runDoctorText(CCommandRun& rcRun)
{
    CDiagnosis cDiagnosis(rcRun);
    diagnoseText(rcRun, cDiagnosis, namedHandle(rcRun));
    cDiagnosis.finish();
}

void runDoctorPicture(CCommandRun& rcRun)
{
    CDiagnosis cDiagnosis(rcRun);
    diagnosePicture(rcRun, cDiagnosis);
    cDiagnosis.finish();
}

void runDoctorRecording(CCommandRun& rcRun)
{
    CDiagnosis cDiagnosis(rcRun);
    diagnoseRecording(rcRun, cDiagnosis);
    cDiagnosis.finish();
}

void runDoctorBoard(CCommandRun& rcRun)
{
    CDiagnosis cDiagnosis(rcRun);
    diagnoseBoard(rcRun, cDiagnosis);
    cDiagnosis.finish();
}

void runDoctor(CCommandRun& rcRun)
{
    CDiagnosis cDiagnosis(rcRun);
    diagnoseBoard(rcRun, cDiagnosis);
    try {
        diagnosePicture(rcRun, cDiagnosis);
        diagnoseRecording(rcRun, cDiagnosis);
        diagnoseTexts(rcRun, cDiagnosis, rcRun.arguments().number("up-to", LIST_DEFAULT));
    } catch (const CFailure& rcFailure) {
        // Without the daemon, or against its policy, there is nothing more to find, and that was told.
        if (rcFailure.status() != eNoDaemon && rcFailure.status() != eNotAllowed)
            throw;
    }
    cDiagnosis.finish();
}
