/* halden-demo: still images, through the platform as the daemon handles them. */
#ifndef HALDEND_BOARD_STILL_IMAGE_DEMO_H
#define HALDEND_BOARD_STILL_IMAGE_DEMO_H

class QString;

/// Each works on the image in a file and says whether that went well.
struct SImageCommand {
    const char* pszName;
    const char* pszHelp;
    bool (*pfnDo)(const QString& rcFile);
};

/// Ends with one without a name.
extern const SImageCommand IMAGE_COMMANDS[];

#endif
