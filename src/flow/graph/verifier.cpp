#include "flow/graph/verifier.h"

#include <set>
#include <tuple>

namespace xfc::flow {

namespace {

/// Looks at one graph and writes down what it finds.
class verifier {
public:
    verifier(std::span<const value> values, std::span<const port> inputs, std::span<const port> outputs)
        : values_(values), inputs_(inputs), outputs_(outputs) {}

    std::vector<std::string> run() {
        for (std::size_t id = 0; id < values_.size(); ++id) {
            check_value(id);
        }
        for (const port& input : inputs_) {
            check_input(input);
        }
        for (const port& output : outputs_) {
            if (output.value >= values_.size()) {
                faults_.push_back("output " + output.name + " has no value");
            } else if (values_[output.value].format != output.format) {
                faults_.push_back("output " + output.name + " differs from its value in format");
            }
        }
        return std::move(faults_);
    }

private:
    void complain(std::size_t id, const std::string& what) {
        faults_.push_back("value " + std::to_string(id) + " (" + std::string(row_of(values_[id].op).name) + ") " +
                          what);
    }

    void check_value(std::size_t id) {
        const value& one = values_[id];
        const operation_row& row = row_of(one.op);
        if (!row.results.contains(one.format)) {
            complain(id, "cannot be " + std::string(format_name(one.format)));
        }
        if (!seen_.insert({one.op, one.format, one.operands}).second) {
            complain(id, "stands twice");
        }
        if (one.op == operation::input &&
            (one.port() >= inputs_.size() || inputs_[one.port()].value != static_cast<value_id>(id))) {
            complain(id, "has no port");
        }
        if (row.commutative && one.operands[0] > one.operands[1]) {
            complain(id, "has its operands out of order");
        }
        for (std::size_t place = 0; place < one.operand_span().size(); ++place) {
            if (one.operands.at(place) >= id) {
                complain(id, "has an operand that is not earlier");
                return;
            }
        }
        for (std::size_t place = 0; place < one.operand_span().size(); ++place) {
            check_operand(id, row, place);
        }
    }

    void check_operand(std::size_t id, const operation_row& row, std::size_t place) {
        const value& operand = values_[values_[id].operands.at(place)];
        bool fits = true;
        switch (row.operands.at(place)) {
            case operand_rule::none:
                break;
            case operand_rule::as_result:
                fits = operand.format == values_[id].format;
                break;
            case operand_rule::alike:
                fits = row.alike_formats.contains(operand.format) &&
                       operand.format == values_[values_[id].operands[0]].format;
                break;
            case operand_rule::integer:
                fits = operand.format == number_format::integer;
                break;
            case operand_rule::known:
                fits = operand.format == number_format::integer && operand.op == operation::constant;
                break;
            case operand_rule::condition:
                fits = operand.format == number_format::boolean;
                break;
            case operand_rule::any_other:
                fits = operand.format != values_[id].format && operand.format != number_format::boolean;
                break;
        }
        if (!fits) {
            complain(id, "has a wrong operand " + std::to_string(place + 1));
        }
    }

    void check_input(const port& input) {
        if (input.value >= values_.size() || values_[input.value].op != operation::input) {
            faults_.push_back("input " + input.name + " drives no value");
        } else if (values_[input.value].format != input.format) {
            faults_.push_back("input " + input.name + " differs from its value in format");
        }
    }

    std::span<const value> values_;
    std::span<const port> inputs_;
    std::span<const port> outputs_;
    std::set<std::tuple<operation, number_format, std::array<value_id, most_operands>>> seen_;
    std::vector<std::string> faults_;
};

}  // namespace

std::vector<std::string> faults_of(std::span<const value> values, std::span<const port> inputs,
                                   std::span<const port> outputs) {
    return verifier(values, inputs, outputs).run();
}

std::vector<std::string> faults_of(const graph& source) {
    return faults_of(source.values(), source.inputs(), source.outputs());
}

}  // namespace xfc::flow
