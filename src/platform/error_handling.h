// The ways the legacy handlers treat a run-time failure: show its text and go
// on with the next statement, show it and leave the routine, or pass it over.
#pragma once

#include "platform/message_box.h"
#include "platform/runtime_error.h"

namespace lorvane::platform {

// Runs one statement; a failure is shown (OK button, default title) and the
// caller goes on. Gives false when the statement failed.
template <typename Statement>
bool showErrorAndGoOn(Statement&& statement) {
    try {
        statement();
        return true;
    } catch (const RuntimeError& error) {
        ErrorBox(error.message());
        return false;
    }
}

// Runs a whole routine; a failure is shown and the routine is left there.
template <typename Routine>
bool showErrorAndLeave(Routine&& routine, int buttons = MsgBoxStyle::OkOnly) {
    try {
        routine();
        return true;
    } catch (const RuntimeError& error) {
        ErrorBox(error.message(), buttons);
        return false;
    }
}

// Runs one statement of a routine that ignores its errors: a failure is
// passed over in silence and the caller goes on.
template <typename Statement>
void ignoreErrors(Statement&& statement) {
    try {
        statement();
    } catch (const RuntimeError&) {
    }
}

}  // namespace lorvane::platform
