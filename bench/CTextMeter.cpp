/* SPDX-License-Identifier: MIT */
#include "bench/CTextMeter.h"

#include "hw/video_geometry.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>

namespace
{

using CClock = std::chrono::steady_clock;

const char* const OBJECT = "videooverlay";
const char* const TEXT = "20 characters, all x";
const int STRINGS = 1000;
const int CALLS_AT_ONCE = 250;  // one way, until the service has caught up
const int CREATIONS_MIN = 5000; // of small numbers of texts several times

// Positions are bytes. Below the visible rows nothing is drawn, and all texts have places of their own.
const int PLACES_A_ROW = 256;
const int FIRST_HIDDEN_ROW = VIDEO_TEXT_ROWS;
const int HIDDEN_ROWS = 230;

double microsecondsSince(CClock::time_point cStart)
{
    return std::chrono::duration<double, std::micro>(CClock::now() - cStart).count();
}

} // namespace

CTextMeter::CTextMeter()
{
    m_pcServices[eTexts] = m_cStage.start(eDaemon);
    m_pcServices[eBareTexts] = m_cStage.start(eBareQtOverlay);
}

// A getter queues up behind the calls that were sent.
void CTextMeter::barrier(const std::string& rcName)
{
    if (m_cStage.client().get(rcName, OBJECT, "get_max_text_line_width") != VIDEO_TEXT_COLUMNS)
        throw std::runtime_error("wrong width");
}

double CTextMeter::measure(ETextSide eSide, ETextFigure eFigure)
{
    const std::string& rcName = service(eSide).cBusName;
    if (eFigure == eStringRate)
        return rateOfStrings(rcName);
    if (eFigure == eDestroy)
        return destroy(eSide == eTexts ? TEXT_COUNTS[eCreateMany - eCreateFew]
                                       : TEXT_COUNTS[eCreateSome - eCreateFew]);
    return create(rcName, TEXT_COUNTS[eFigure - eCreateFew]);
}

double CTextMeter::rateOfStrings(const std::string& rcName)
{
    CBusClient& rcClient = m_cStage.client();
    const int iText = rcClient.get(rcName, OBJECT, "create_text");
    if (rcName == service(eTexts).cBusName)
        rcClient.send(rcName, OBJECT, "show_text", "i", iText);
    barrier(rcName);
    const CClock::time_point cStart = CClock::now();
    for (int i = 0; i < STRINGS; ++i)
        rcClient.send(rcName, OBJECT, "set_text_string", "is", iText, TEXT);
    barrier(rcName);
    const double dMicroseconds = microsecondsSince(cStart);
    if (rcName == service(eTexts).cBusName)
        rcClient.send(rcName, OBJECT, "destroy_all_texts", "");
    return STRINGS / dMicroseconds * 1e6;
}

double CTextMeter::create(const std::string& rcName, int iTexts)
{
    const int iTimes = std::max(1, CREATIONS_MIN / iTexts);
    double dMicroseconds = 0;
    for (int i = 0; i < iTimes; ++i)
        dMicroseconds += createOnce(rcName, iTexts);
    return dMicroseconds / iTimes / iTexts;
}

double CTextMeter::createOnce(const std::string& rcName, int iTexts)
{
    CBusClient& rcClient = m_cStage.client();
    barrier(rcName);
    int iLast = 0;
    const CClock::time_point cStart = CClock::now();
    for (int i = 0; i < iTexts; ++i)
        iLast = rcClient.get(rcName, OBJECT, "create_text");
    const double dMicroseconds = microsecondsSince(cStart);
    if (rcName == service(eTexts).cBusName) {
        if (iLast != iTexts)
            throw std::runtime_error("not every text was made");
        rcClient.send(rcName, OBJECT, "destroy_all_texts", "");
    }
    return dMicroseconds;
}

// In places of their own: of texts that overlap, each that goes has its neighbours drawn again.
double CTextMeter::destroy(int iTexts)
{
    CBusClient& rcClient = m_cStage.client();
    const std::string& rcName = service(eTexts).cBusName;
    for (int iText = 1; iText <= iTexts; ++iText) {
        if (iText < iTexts)
            rcClient.send(rcName, OBJECT, "create_text", "");
        else if (rcClient.get(rcName, OBJECT, "create_text") != iTexts)
            throw std::runtime_error("not every text was made");
        rcClient.send(rcName, OBJECT, "set_text_string", "is", iText, "x");
        rcClient.send(rcName, OBJECT, "set_text_position", "iii", iText, iText % PLACES_A_ROW,
                      FIRST_HIDDEN_ROW + iText / PLACES_A_ROW % HIDDEN_ROWS);
        rcClient.send(rcName, OBJECT, "show_text", "i", iText);
        if (iText % CALLS_AT_ONCE == 0)
            barrier(rcName);
    }
    barrier(rcName);
    const CClock::time_point cStart = CClock::now();
    rcClient.send(rcName, OBJECT, "destroy_all_texts", "");
    barrier(rcName);
    const double dMicroseconds = microsecondsSince(cStart);
    if (rcClient.get(rcName, OBJECT, "create_text") != 1)
        throw std::runtime_error("texts are left");
    rcClient.send(rcName, OBJECT, "destroy_all_texts", "");
    return dMicroseconds / iTexts;
}
