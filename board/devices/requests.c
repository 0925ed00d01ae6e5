/* SPDX-License-Identifier: MIT */
/* Requests in the trace, and the refusal of wrong ones. */
#include "board/devices/requests.h"

void request_trace(const struct board* board, enum device device, const char* operation, uint32_t address,
                   unsigned address_digits, const char* separator, uint32_t value, unsigned value_digits,
                   int error)
{
    struct line line;
    line_start(&line, device, operation);
    line_hex(&line, address, address_digits);
    if (separator != NULL) {
        line_text(&line, separator);
        line_hex(&line, value, value_digits);
    }
    line_finish(&line, board, error);
}

static const char* reason_of(int error)
{
    switch (error) {
    case EFAULT:
        return "its record is missing";
    case EOPNOTSUPP:
        return "no such size";
    default:
        return "no such request";
    }
}

int request_refuse(const struct board* board, enum device device, const char* operation, uint32_t number,
                   unsigned digits, int error)
{
    judge_request(board, device, operation, number, digits, reason_of(error));
    if (tracing(board))
        request_trace(board, device, operation, number, digits, NULL, 0, 0, error);
    return outcome(error);
}
