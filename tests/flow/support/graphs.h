#pragma once

#include <initializer_list>
#include <string>

#include "flow/graph/graph.h"

namespace xfc::flow::test {

/// Graphs as tests write them.
class graph_writer {
public:
    graph made;

    value_id input(const std::string& name, number_format format = number_format::single_float) {
        return made.add_input({.name = name, .format = format});
    }
    value_id make(operation op, number_format format, std::initializer_list<value_id> operands) {
        return made.make(op, format, {operands.begin(), operands.size()});
    }
    value_id add(value_id a, value_id b) { return make(operation::add, made[a].format, {a, b}); }
    value_id subtract(value_id a, value_id b) { return make(operation::subtract, made[a].format, {a, b}); }
    value_id multiply(value_id a, value_id b) { return make(operation::multiply, made[a].format, {a, b}); }
    void output(const std::string& name, value_id value) {
        made.add_output({.name = name, .format = made[value].format, .value = value});
    }
};

}  // namespace xfc::flow::test
