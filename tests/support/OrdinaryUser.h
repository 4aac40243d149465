#pragma once

#include <unistd.h>

#include <gtest/gtest.h>

namespace support {

/// The rights of an ordinary user, for tests that are run by root, whom no file mode binds.
class OrdinaryUser
{
public:
    OrdinaryUser()
    {
        if (m_wasRoot) {
            EXPECT_EQ(seteuid(65534), 0);
        }
    }
    ~OrdinaryUser()
    {
        if (m_wasRoot) {
            EXPECT_EQ(seteuid(0), 0);
        }
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

private:
    const bool m_wasRoot = geteuid() == 0;
};

} // namespace support
