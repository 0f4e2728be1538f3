// HandOver: how handing one link to the app ended: the system reported that
// the app was given it, reported an error, or said nothing in time.
#pragma once

namespace corvel {

enum class HandOver { delivered, failed, timedOut };

}  // namespace corvel
