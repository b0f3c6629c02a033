#pragma once

#include <wayland-client.h>

// Generated from the protocols' descriptions; included by sources only.
#include <ext-idle-notify-v1-client.h>
#include <idle-client.h>
#include <wlr-foreign-toplevel-management-unstable-v1-client.h>
