/* The overlay operations that this board has no hardware for, in the order of IVideoOverlay. The interface
 * declares them, the back end answers each with a line, and the front end passes them on; all three are made
 * from this table, so that another operation is another row.
 *
 * A row goes to PASSED_ON if the front end's operation has the same name and does nothing else, to ADAPTED if
 * the front end writes its own. Both are macros of three arguments: the name, the parameters, and the
 * arguments that pass them on, the latter two in parentheses.
 */
#ifndef HALDEND_OVERLAY_UNSUPPORTEDOPERATIONS_H
#define HALDEND_OVERLAY_UNSUPPORTEDOPERATIONS_H

// clang-format off
#define OVERLAY_UNSUPPORTED_OPERATIONS(PASSED_ON, ADAPTED)                             \
    PASSED_ON(toggleCrosshairVisibility,     (),                 ())                   \
    PASSED_ON(changeCrosshairColor,          (int iColor),       (iColor))             \
    PASSED_ON(changeCrosshairPosition,       (int iX, int iY),   (iX, iY))             \
    PASSED_ON(changeCrosshairShape,          (int iShape),       (iShape))             \
    PASSED_ON(toggleCameraHorizonVisibility, (),                 ())                   \
    PASSED_ON(changeCameraHorizonColor,      (int iColor),       (iColor))             \
    PASSED_ON(changeCameraHorizonPosition,   (int iX, int iY),   (iX, iY))             \
    PASSED_ON(changeCameraHorizonShape,      (int iShape),       (iShape))             \
    PASSED_ON(changeCameraHorizonGridColor,  (int iColor),       (iColor))             \
    PASSED_ON(toggleLogoVisibility,          (),                 ())                   \
    PASSED_ON(toggleLogoAnimation,           (),                 ())                   \
    PASSED_ON(changeLogoFile,                (QString cPath),    (cPath))              \
    PASSED_ON(changeLogoPosition,            (int iX, int iY),   (iX, iY))             \
    PASSED_ON(toggleRoiVisibility,           (),                 ())                   \
    PASSED_ON(changeRoiColor,                (int iColor),       (iColor))             \
    PASSED_ON(changeRoiPosition,             (int iX, int iY),   (iX, iY))             \
    PASSED_ON(setRoiDrawPoint1,              (int iX, int iY),   (iX, iY))             \
    PASSED_ON(setRoiDrawPoint2,              (int iX, int iY),   (iX, iY))             \
    PASSED_ON(changeRoiShape,                (int iShape),       (iShape))             \
    PASSED_ON(changeRoiSize,                 (int iSize),        (iSize))              \
    PASSED_ON(drawRoi,                       (),                 ())                   \
    PASSED_ON(toggleCrawlerRollVisibility,   (),                 ())                   \
    PASSED_ON(changeCrawlerRollColor,        (int iColor),       (iColor))             \
    PASSED_ON(changeCrawlerRollShape,        (int iShape),       (iShape))             \
    PASSED_ON(changeCrawlerRollPosition,     (int iX, int iY),   (iX, iY))             \
    PASSED_ON(toggleCrawlerPitchVisibility,  (),                 ())                   \
    PASSED_ON(changeCrawlerPitchColor,       (int iColor),       (iColor))             \
    PASSED_ON(changeCrawlerPitchShape,       (int iShape),       (iShape))             \
    PASSED_ON(changeCrawlerPitchPosition,    (int iX, int iY),   (iX, iY))             \
    PASSED_ON(toggleSpyholeVisibility,       (),                 ())                   \
    PASSED_ON(changeSpyholeColor,            (int iColor),       (iColor))             \
    PASSED_ON(changeSpyholePosition,         (int iX, int iY),   (iX, iY))             \
    PASSED_ON(changeSpyholeShape,            (int iShape),       (iShape))             \
    PASSED_ON(changeVideoPosition,           (int iPosition),    (iPosition))          \
    ADAPTED  (moveCameraPosition,            (int iX, int iY),   (iX, iY))             \
    PASSED_ON(changeFont, (QString cName, int iWeight, bool bItalic, int iPointSize, bool bStrikeOut, \
                           bool bUnderline), (cName, iWeight, bItalic, iPointSize, bStrikeOut, bUnderline)) \
    ADAPTED  (setOsdTransparency,            (int iValue),       (iValue))
// clang-format on

#endif
