#include "examples/tour/Migration.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "TourKit.h"

namespace tour {
namespace {

using testing::Eq;
using testing::Optional;

class Migration : public testing::Test {
protected:
    Migration() : m_instance(Grid(4, 3)), m_population(m_instance, 1, 0, 1, {}) { m_population.Populate(); }

    void SetUp() override { WriteMigrant(m_stream, m_population.Best()); }

    const Instance m_instance;
    TourPopulation m_population;
    KyDynArrayStream m_stream;
};

TEST_F(Migration, BringsATourOverWhole) {
    EXPECT_THAT(ReadMigrant(m_stream, m_instance), Optional(Eq(m_population.Best().Cities())));
    EXPECT_EQ(m_stream.GetLength(), 8 * (3 + 12));
}

TEST_F(Migration, RefusesAByteTooFewOrTooMany) {
    m_stream.SetLength(m_stream.GetLength() - 1);
    EXPECT_EQ(ReadMigrant(m_stream, m_instance), std::nullopt);

    m_stream.SetLength(m_stream.GetLength() + 2);
    EXPECT_EQ(ReadMigrant(m_stream, m_instance), std::nullopt);
}

TEST_F(Migration, RefusesNothing) {
    KyDynArrayStream nothing;

    EXPECT_EQ(ReadMigrant(nothing, m_instance), std::nullopt);
}

TEST_F(Migration, RefusesATourOfAnotherInstance) {
    EXPECT_EQ(ReadMigrant(m_stream, Grid(4, 4)), std::nullopt);
    EXPECT_EQ(ReadMigrant(m_stream, Grid(2, 6)), std::nullopt);
}

TEST_F(Migration, RefusesAnyChangedBit) {
    for (long i = 0; i < 8 * m_stream.GetLength(); ++i) {
        char& byte = m_stream.m_bytes.m_pData[i / 8];
        const char before = byte;
        byte = static_cast<char>(byte ^ (1 << i % 8));

        EXPECT_EQ(ReadMigrant(m_stream, m_instance), std::nullopt) << "bit " << i;

        byte = before;
    }
    EXPECT_NE(ReadMigrant(m_stream, m_instance), std::nullopt);
}

RC_GTEST_PROP(MigrationProperty, RefusesAnyBytes, (std::vector<char> bytes)) {
    const Instance instance = Grid(2, 2);
    bytes.resize(*rc::gen::element<std::size_t>(bytes.size(), 8 * 7));
    KyDynArrayStream stream;
    stream.Write(bytes.data(), static_cast<long>(bytes.size()));

    RC_ASSERT(!ReadMigrant(stream, instance).has_value());
}

}  // namespace
}  // namespace tour
