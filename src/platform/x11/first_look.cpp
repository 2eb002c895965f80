#include "platform/x11/first_look.h"

#include "platform/x11/fence.h"

namespace tessellon::x11 {

Token firstLook(Connection& connection, WindowMirror& mirror, Seconds timeout) {
    Fence fence(connection);
    bool waited = false;
    for (;;) {
        Token look = mirror.beginReads();
        mirror.look();
        // With nobody in charge the windows are found without a list. A window manager handles
        // requests, the fence's too, only when it has taken over everything.
        if (waited || !mirror.windowManagerAlive()) {
            return look;
        }
        fence.wait(timeout);
        waited = true;
    }
}

}  // namespace tessellon::x11
