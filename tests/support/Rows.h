#pragma once

#include <QTest>

/// The rows of a data test, each a name and a value for every column: `Rows<int> row{"column"}; row("name", 1);`.
template <typename... Values>
class Rows final {
    template <typename>
    using Name = const char*;

public:
    explicit Rows(Name<Values>... columns) { (QTest::addColumn<Values>(columns), ...); }

    void operator()(const char* name, const Values&... values) const { (QTest::newRow(name) << ... << values); }
};
