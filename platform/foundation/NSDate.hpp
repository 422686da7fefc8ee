#pragma once

/// Points in time.
class NSDate {
 public:
    /// Seconds since 1 January 2001, 00:00 GMT, by the machine's clock.
    static double timeIntervalSinceReferenceDate();
};
