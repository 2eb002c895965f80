// Included ahead of everything in the layers that must not know a desktop: naming a type of xcb,
// Xlib or Qt there does not compile. Those layers ask for what they need through the ports.
#pragma once

#pragma GCC poison xcb_connection_t xcb_window_t xcb_generic_event_t
#pragma GCC poison XOpenDisplay XEvent
#pragma GCC poison QObject QString QWidget QTimer QCoreApplication
