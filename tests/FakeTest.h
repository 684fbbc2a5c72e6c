#ifndef PEBBLETON_TESTS_FAKE_TEST_H
#define PEBBLETON_TESTS_FAKE_TEST_H

#include <gmock/gmock.h>

#include "Fake.h"

// Gives each test a new fake.
class FakeTest : public testing::Test
{
protected:
    FakeTest()
    {
        fake = Fake();
    }
};

#endif
