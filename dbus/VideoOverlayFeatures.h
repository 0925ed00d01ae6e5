/* The overlay features that clients may ask for and this board doesn't have: bus method and front end operation, with
 * the arguments that are passed on. CHaldenVideoOverlay has a slot for each row. Texts are taken by value, as the
 * front end takes them.
 */
#ifndef HALDEND_DBUS_VIDEOOVERLAYFEATURES_H
#define HALDEND_DBUS_VIDEOOVERLAYFEATURES_H

/* FEATURE(bus method, front end operation, parameters, arguments) */
#define VIDEO_OVERLAY_FEATURES(FEATURE)                                                               \
    FEATURE(toggle_crosshair_visibility, toggleCrosshairVisibility, (), ())                           \
    FEATURE(change_crosshair_color, changeCrosshairColor, (int newColor), (newColor))                 \
    FEATURE(change_crosshair_position, changeCrosshairPosition, (int x, int y), (x, y))               \
    FEATURE(change_crosshair_shape, changeCrosshairShape, (int shape), (shape))                       \
    FEATURE(toggle_camerahorizon_visibility, toggleCameraHorizonVisibility, (), ())                   \
    FEATURE(change_camerahorizon_color, changeCameraHorizonColor, (int newColor), (newColor))         \
    FEATURE(change_camerahorizon_gridcolor, changeCameraHorizonGridColor, (int newColor), (newColor)) \
    FEATURE(change_camerahorizon_position, changeCameraHorizonPosition, (int x, int y), (x, y))       \
    FEATURE(change_camerahorizon_shape, changeCameraHorizonShape, (int shape), (shape))               \
    FEATURE(toggle_logo_visibility, toggleLogoVisibility, (), ())                                     \
    FEATURE(toggle_logo_animation, toggleLogoAnimation, (), ())                                       \
    FEATURE(change_logo_file, changeLogoFile, (QString filePath), (filePath))                         \
    FEATURE(change_logo_position, changeLogoPosition, (int x, int y), (x, y))                         \
    FEATURE(toggle_roi_visibility, toggleRoiVisibility, (), ())                                       \
    FEATURE(change_roi_color, changeRoiColor, (int newColor), (newColor))                             \
    FEATURE(change_roi_position, changeRoiPosition, (int x, int y), (x, y))                           \
    FEATURE(set_roi_draw_point_1, setRoiDrawPoint1, (int x, int y), (x, y))                           \
    FEATURE(set_roi_draw_point_2, setRoiDrawPoint2, (int x, int y), (x, y))                           \
    FEATURE(change_roi_shape, changeRoiShape, (int shape), (shape))                                   \
    FEATURE(change_roi_size, changeRoiSize, (int value), (value))                                     \
    FEATURE(draw_roi, drawRoi, (), ())                                                                \
    FEATURE(toggle_crawlerroll_visibility, toggleCrawlerRollVisibility, (), ())                       \
    FEATURE(change_crawlerroll_color, changeCrawlerRollColor, (int newColor), (newColor))             \
    FEATURE(change_crawlerroll_shape, changeCrawlerRollShape, (int shape), (shape))                   \
    FEATURE(change_crawlerroll_position, changeCrawlerRollPosition, (int x, int y), (x, y))           \
    FEATURE(toggle_crawlerpitch_visibility, toggleCrawlerPitchVisibility, (), ())                     \
    FEATURE(change_crawlerpitch_color, changeCrawlerPitchColor, (int newColor), (newColor))           \
    FEATURE(change_crawlerpitch_shape, changeCrawlerPitchShape, (int shape), (shape))                 \
    FEATURE(change_crawlerpitch_position, changeCrawlerPitchPosition, (int x, int y), (x, y))         \
    FEATURE(toggle_spyhole_visibility, toggleSpyholeVisibility, (), ())                               \
    FEATURE(change_spyhole_color, changeSpyholeColor, (int newColor), (newColor))                     \
    FEATURE(change_spyhole_position, changeSpyholePosition, (int x, int y), (x, y))                   \
    FEATURE(change_spyhole_shape, changeSpyholeShape, (int shape), (shape))                           \
    FEATURE(change_video_position, changeVideoPosition, (int pos), (pos))                             \
    FEATURE(move_video_position, moveVideoPosition, (int x, int y), (x, y))                           \
    FEATURE(change_font, changeFont,                                                                  \
            (QString name, int weight, bool italic, int pointsize, bool strikeOut, bool underline),   \
            (name, weight, italic, pointsize, strikeOut, underline))

#endif
