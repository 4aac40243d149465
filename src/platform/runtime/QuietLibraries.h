#pragma once

namespace runtime {

/// Switches off what Qt would print on stderr, in English: what a user has to know is said by us.
void quietQt();

/// Keeps what a C library prints on stderr away from there as long as it lives.
class QuietStderr
{
public:
    QuietStderr();
    ~QuietStderr();
    QuietStderr(const QuietStderr&) = delete;
    QuietStderr& operator=(const QuietStderr&) = delete;

private:
    int m_stderr;
};

} // namespace runtime
