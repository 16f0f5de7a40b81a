// Progress of nested work, and giving it up.
#include "host/base/progress.h"

#include <gtest/gtest.h>

namespace korvex {
namespace {

class Listener : public ProgressListener {
public:
    Listener() { setProgressListener(this); }
    ~Listener() override { setProgressListener(nullptr); }
    void begin(const std::wstring& label, bool) override { labels.push_back(label); }
    bool step(double part) override {
        parts.push_back(part);
        return !givesUp;
    }
    void end() override { ++ends; }
    std::vector<std::wstring> labels;
    std::vector<double> parts;
    bool givesUp = false;
    int ends = 0;
};

TEST(ProgressTest, InnerWorkCountsAsAPartOfTheOuter) {
    Listener heard;
    {
        ProgressScope outer(L"outer", 10);
        outer.step(0);
        outer.nextPart(6);
        {
            ProgressScope middle(L"middle", 100);
            middle.step(50);
            middle.nextPart(50);
            ProgressScope inner(L"inner", 4);
            inner.step(2);
            inner.step(9);  // more than there is
        }
        outer.step(6);
        ProgressScope unshared(L"of no share", 2);
        unshared.step(1);
    }
    EXPECT_EQ(heard.labels, std::vector<std::wstring>{L"outer"});
    EXPECT_EQ(heard.parts, (std::vector<double>{0, 0.3, 0.45, 0.6, 0.6, 0.6}));
    EXPECT_EQ(heard.ends, 1);
}

TEST(ProgressTest, ReportsAreFewWhereTheSizeIsKnown) {
    Listener heard;
    {
        ProgressScope known(L"known", 1000000);
        for (int i = 0; i < 1000000; ++i) {
            ASSERT_TRUE(known.step(i));
        }
    }
    EXPECT_GT(heard.parts.size(), 100U);
    EXPECT_LT(heard.parts.size(), 1000U);
    heard.parts.clear();
    ProgressScope unknown(L"unknown", 0);
    EXPECT_TRUE(unknown.step(7));
    EXPECT_EQ(heard.parts, std::vector<double>{-1});
}

TEST(ProgressTest, WhatWasGivenUpStaysSoUntilTheOutermostEnds) {
    Listener heard;
    {
        ProgressScope outer(L"outer", 10);
        EXPECT_TRUE(outer.step(1));
        {
            ProgressScope firm(L"must be finished", 10, false);
            heard.givesUp = true;
            EXPECT_TRUE(firm.step(1)) << "it cannot be cancelled";
            heard.givesUp = false;
            EXPECT_TRUE(firm.step(9));
            EXPECT_FALSE(firm.isCancelled());
        }
        EXPECT_TRUE(outer.isCancelled());
        EXPECT_FALSE(outer.step(1)) << "also without another report being due";
        ProgressScope late(L"late", 10);
        EXPECT_FALSE(late.step(0));
    }
    ProgressScope next(L"next", 10);
    EXPECT_FALSE(next.isCancelled());
    EXPECT_TRUE(next.step(1));
}

TEST(ProgressTest, NobodyNeedListen) {
    ProgressScope alone(L"alone", 10);
    EXPECT_TRUE(alone.step(1));
    Listener late;
    EXPECT_TRUE(alone.step(5)) << "work that had begun is not heard";
    EXPECT_TRUE(late.parts.empty());
    ProgressScope inner(L"inner", 10);
    EXPECT_TRUE(inner.step(1));
    EXPECT_TRUE(late.parts.empty());
}

}  // namespace
}  // namespace korvex
