/* SPDX-License-Identifier: MIT */
/* The only list of the overlay features that clients may ask for and that this board has no hardware for. The
 * slots of the service object, the forwarders of the front end, the interface of the back ends, this board's
 * answers and the table in docs/dbus-api.md are made from it. That page's generator refuses an interface file
 * that differs from the list. Another feature is another row here, and a method in the interface file.
 *
 * ROW is a macro of five arguments: bus method, operation of the front end, operation of the back end,
 * parameters, and the arguments that pass them on, the last two in parentheses. Parameters are named as on
 * the bus. Texts are passed by value.
 *
 * Kept: the back end moves the camera where the others move the video. Its name shows in the line on standard
 * output that service staff see.
 *
 * setOsdTransparency() is no row, because the front end also draws the texts again.
 */
#ifndef HALDEND_OVERLAY_UNSUPPORTEDOPERATIONS_H
#define HALDEND_OVERLAY_UNSUPPORTEDOPERATIONS_H

/// In the order of the service object's slots.
#define OVERLAY_FEATURES_AS_SLOTS(ROW) OVERLAY_FEATURES(ROW, OVERLAY_AS_WRITTEN)

/// In the order of IVideoOverlay, where the grid's colour comes after the shape.
#define OVERLAY_FEATURES_AS_OPERATIONS(ROW) OVERLAY_FEATURES(ROW, OVERLAY_SWAPPED)

// clang-format off
#define OVERLAY_AS_WRITTEN(first, second) first second
#define OVERLAY_SWAPPED(first, second) second first

// Front end and back end use the same name.
#define OVERLAY_SAME(ROW, method, operation, parameters, arguments) \
    ROW(method, operation, operation, parameters, arguments)

#define OVERLAY_FEATURES(ROW, IN_ORDER)                                                                            \
  OVERLAY_SAME(ROW, toggle_crosshair_visibility,     toggleCrosshairVisibility,     (),              ())           \
  OVERLAY_SAME(ROW, change_crosshair_color,          changeCrosshairColor,          (int newColor),  (newColor))   \
  OVERLAY_SAME(ROW, change_crosshair_position,       changeCrosshairPosition,       (int x, int y),  (x, y))       \
  OVERLAY_SAME(ROW, change_crosshair_shape,          changeCrosshairShape,          (int shape),     (shape))      \
  OVERLAY_SAME(ROW, toggle_camerahorizon_visibility, toggleCameraHorizonVisibility, (),              ())           \
  OVERLAY_SAME(ROW, change_camerahorizon_color,      changeCameraHorizonColor,      (int newColor),  (newColor))   \
  IN_ORDER(                                                                                                        \
  OVERLAY_SAME(ROW, change_camerahorizon_gridcolor,  changeCameraHorizonGridColor,  (int newColor),  (newColor)),  \
  OVERLAY_SAME(ROW, change_camerahorizon_position,   changeCameraHorizonPosition,   (int x, int y),  (x, y))       \
  OVERLAY_SAME(ROW, change_camerahorizon_shape,      changeCameraHorizonShape,      (int shape),     (shape)))     \
  OVERLAY_SAME(ROW, toggle_logo_visibility,          toggleLogoVisibility,          (),              ())           \
  OVERLAY_SAME(ROW, toggle_logo_animation,           toggleLogoAnimation,           (),              ())           \
  OVERLAY_SAME(ROW, change_logo_file,                changeLogoFile,                (QString filePath),(filePath)) \
  OVERLAY_SAME(ROW, change_logo_position,            changeLogoPosition,            (int x, int y),  (x, y))       \
  OVERLAY_SAME(ROW, toggle_roi_visibility,           toggleRoiVisibility,           (),              ())           \
  OVERLAY_SAME(ROW, change_roi_color,                changeRoiColor,                (int newColor),  (newColor))   \
  OVERLAY_SAME(ROW, change_roi_position,             changeRoiPosition,             (int x, int y),  (x, y))       \
  OVERLAY_SAME(ROW, set_roi_draw_point_1,            setRoiDrawPoint1,              (int x, int y),  (x, y))       \
  OVERLAY_SAME(ROW, set_roi_draw_point_2,            setRoiDrawPoint2,              (int x, int y),  (x, y))       \
  OVERLAY_SAME(ROW, change_roi_shape,                changeRoiShape,                (int shape),     (shape))      \
  OVERLAY_SAME(ROW, change_roi_size,                 changeRoiSize,                 (int value),     (value))      \
  OVERLAY_SAME(ROW, draw_roi,                        drawRoi,                       (),              ())           \
  OVERLAY_SAME(ROW, toggle_crawlerroll_visibility,   toggleCrawlerRollVisibility,   (),              ())           \
  OVERLAY_SAME(ROW, change_crawlerroll_color,        changeCrawlerRollColor,        (int newColor),  (newColor))   \
  OVERLAY_SAME(ROW, change_crawlerroll_shape,        changeCrawlerRollShape,        (int shape),     (shape))      \
  OVERLAY_SAME(ROW, change_crawlerroll_position,     changeCrawlerRollPosition,     (int x, int y),  (x, y))       \
  OVERLAY_SAME(ROW, toggle_crawlerpitch_visibility,  toggleCrawlerPitchVisibility,  (),              ())           \
  OVERLAY_SAME(ROW, change_crawlerpitch_color,       changeCrawlerPitchColor,       (int newColor),  (newColor))   \
  OVERLAY_SAME(ROW, change_crawlerpitch_shape,       changeCrawlerPitchShape,       (int shape),     (shape))      \
  OVERLAY_SAME(ROW, change_crawlerpitch_position,    changeCrawlerPitchPosition,    (int x, int y),  (x, y))       \
  OVERLAY_SAME(ROW, toggle_spyhole_visibility,       toggleSpyholeVisibility,       (),              ())           \
  OVERLAY_SAME(ROW, change_spyhole_color,            changeSpyholeColor,            (int newColor),  (newColor))   \
  OVERLAY_SAME(ROW, change_spyhole_position,         changeSpyholePosition,         (int x, int y),  (x, y))       \
  OVERLAY_SAME(ROW, change_spyhole_shape,            changeSpyholeShape,            (int shape),     (shape))      \
  OVERLAY_SAME(ROW, change_video_position,           changeVideoPosition,           (int pos),       (pos))        \
  ROW(move_video_position, moveVideoPosition, moveCameraPosition, (int x, int y), (x, y))                          \
  OVERLAY_SAME(ROW, change_font, changeFont,                                                                       \
               (QString name, int weight, bool italic, int pointsize, bool strikeOut, bool underline),             \
               (name, weight, italic, pointsize, strikeOut, underline))
// clang-format on

#endif
