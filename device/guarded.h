#pragma once

/// The result of `operation`, or `failure` if a driver lets an exception of its own out of it: that must not end the
/// program.
template <typename Result, typename Operation>
Result guarded(Result failure, Operation operation)
{
    try {
        return operation();
    } catch (...) {
        return failure;
    }
}

/// The same for an operation without a result.
template <typename Operation>
void guarded(Operation operation)
{
    try {
        operation();
    } catch (...) { // what is left undone shows in what the driver says next
    }
}
