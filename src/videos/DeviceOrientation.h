#pragma once

#include <QObject>

namespace ekinora::videos {

// The device's orientation as a screen sets it ("orientation" on the current device), and the
// interface's that follows from it: landscape only while the application's delegate lets the
// interface rotate. On the desktop the window keeps its size; a screen that shows landscape turns
// its own content.
class DeviceOrientation : public QObject {
    Q_OBJECT
public:
    // UIDeviceOrientation values.
    static constexpr int Portrait = 1;
    static constexpr int LandscapeLeft = 3;
    static constexpr int LandscapeRight = 4;

    static DeviceOrientation& current();

    int orientation() const { return m_orientation; }
    void setOrientation(int orientation);
    // Whether the interface stands in landscape now.
    bool interfaceIsLandscape() const;

    // The application delegate's setRestrictRotation: true keeps the interface in portrait.
    static void setRestrictRotation(bool restrict);

signals:
    void changed();

private:
    int m_orientation = Portrait;
};

} // namespace ekinora::videos
