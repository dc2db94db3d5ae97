#pragma once
// The internet transfer control: OpenURL fetches the body of an address as text, synchronously
// on the user-interface thread, and processes no other message meanwhile: no handler of the
// program runs until the transfer has ended. Every scheme the network layer knows is fetched,
// redirects are followed, and the body comes back whatever the status (a 404 page's text too).
// A transfer that fails or brings nothing gives the empty text; an address that cannot be
// attempted at all raises the control's own run-time error.

#include <QString>

namespace platform {

// "URL is malformed": the address names no scheme the control can fetch.
constexpr int ErrInetBadUrl = 35752;

class Inet {
public:
    QString OpenURL(const QString& address);

    // A transfer during which nothing arrives for this long is given up. A person waits on a
    // frozen window for it, so it is far shorter than the classic minute, yet long enough for
    // a slow server to start answering.
    static constexpr int kTimeoutMs = 15000;
};

} // namespace platform
