/* SPDX-License-Identifier: MIT */
/* Requests in the trace, and the refusal of wrong ones. */
#include "board/devices/requests.h"

NEXT(ioctl, int, int, unsigned long, ...)

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

void request_judge(const struct board* board, enum device device, const char* operation, uint32_t number,
                   unsigned digits, int error)
{
    judge_request(board, device, operation, number, digits, reason_of(error));
}

int request_pass(int descriptor, uint32_t request, void* argument)
{
    return next_ioctl()(descriptor, request, argument);
}

int request_unknown(const struct board* board, enum device device, int descriptor, uint32_t request,
                    void* argument, int error)
{
    request_judge(board, device, "ioctl", request, 8, error);
    int result = board->pass ? request_pass(descriptor, request, argument) : outcome(error);
    if (tracing(board))
        request_trace(board, device, "ioctl", request, 8, NULL, 0, 0, result < 0 ? errno : 0);
    return result;
}
