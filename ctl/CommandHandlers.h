/* SPDX-License-Identifier: MIT */
/* The functions that carry the commands out, one or more rows of the command table each. They throw CFailure. */
#ifndef HALDEND_CTL_COMMANDHANDLERS_H
#define HALDEND_CTL_COMMANDHANDLERS_H

class CCommandRun;

// PlainCommands.cpp: one call and no more.
void runPlain(CCommandRun& rcRun);     ///< the row's method, with the arguments in their order
void runOn(CCommandRun& rcRun);        ///< the row's method with true
void runOff(CCommandRun& rcRun);       ///< the row's method with false
void runEitherWay(CCommandRun& rcRun); ///< the row's first method for on, its second for off
void runRedraw(CCommandRun& rcRun);
void runInputOn(CCommandRun& rcRun);
void runInputOff(CCommandRun& rcRun);
void runMessage(CCommandRun& rcRun);
void runColors(CCommandRun& rcRun);

// TextCommands.cpp
void runTextNew(CCommandRun& rcRun);
void runTextSet(CCommandRun& rcRun);
void runTextMove(CCommandRun& rcRun);
void runTextColor(CCommandRun& rcRun);
void runTextId(CCommandRun& rcRun);
void runTextPlain(CCommandRun& rcRun); ///< the row's first method with the handle
void runTextGet(CCommandRun& rcRun);
void runTextList(CCommandRun& rcRun);

// CounterCommands.cpp
void runCounterSet(CCommandRun& rcRun);
void runCounterStart(CCommandRun& rcRun);
void runCounterControl(CCommandRun& rcRun);
void runCounterGet(CCommandRun& rcRun);
void runCounterShow(CCommandRun& rcRun);
void runCounterFollow(CCommandRun& rcRun);

// VideoCommands.cpp
void runVideo(CCommandRun& rcRun); ///< the row's method, which answers with a result
void runRecordTime(CCommandRun& rcRun);
void runImageSave(CCommandRun& rcRun);
void runImageClear(CCommandRun& rcRun);
void runInputType(CCommandRun& rcRun);

// CallCommand.cpp, StatusCommand.cpp, MonitorCommand.cpp, WaitCommand.cpp, RegisterCommands.cpp, BatchCommand.cpp
void runCall(CCommandRun& rcRun);
void runStatus(CCommandRun& rcRun);
void runMonitor(CCommandRun& rcRun);
void runWait(CCommandRun& rcRun);
void runCheckRegisters(CCommandRun& rcRun);
void runBatch(CCommandRun& rcRun);

// DoctorCommands.cpp
void runDoctor(CCommandRun& rcRun);
void runDoctorText(CCommandRun& rcRun);
void runDoctorPicture(CCommandRun& rcRun);
void runDoctorRecording(CCommandRun& rcRun);
void runDoctorBoard(CCommandRun& rcRun);

#endif
