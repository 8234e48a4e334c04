#pragma once

namespace ekinora::platform {

// What must happen before the QGuiApplication exists: the web engine, loaded when a web view is first
// shown, shares its graphics context with Qt Quick, and its sandbox cannot run for the root user (CI
// containers), which then goes without it.
void prepareProcess();

} // namespace ekinora::platform
