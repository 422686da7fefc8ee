#pragma once

/// What the machine model says of the device; at most one is true, neither for a telephone.
struct DeviceKind {
    bool isIpad = false;
    bool isIpod = false;
};

/// From the machine model's first letters, as it stands now.
DeviceKind currentDeviceKind();
