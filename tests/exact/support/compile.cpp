#include "exact/support/compile.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "exact/dfg/expressions.h"
#include "exact/dfg/symbol_table.h"
#include "exact/driver/compiler.h"
#include "exact/driver/switches.h"
#include "exact/frontend/label_list.h"
#include "exact/frontend/parse_tree.h"
#include "exact/frontend/parser.h"
#include "exact/frontend/scanner.h"
#include "exact/run/compilation.h"
#include "exact/run/console.h"
#include "exact/support/temporary_folder.h"

namespace xfc::test {

namespace {

namespace fs = std::filesystem;

/// The files in a folder with their contents, by name.
std::map<std::string, std::string> files_in(const fs::path& folder) {
    std::map<std::string, std::string> found;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        if (entry.is_regular_file()) {
            std::ifstream stream(entry.path(), std::ios::binary);
            found[entry.path().filename().string()] = {std::istreambuf_iterator<char>(stream), {}};
        }
    }
    return found;
}

run_result run_in_folder(const std::vector<std::string>& arguments) {
    std::vector<const char*> pointers;
    for (const std::string& argument : arguments) {
        pointers.push_back(argument.c_str());
    }
    int status = 0;
    run_result result = catch_output([&] { status = run_compiler(pointers); });
    result.status = std::max(result.status, status);
    return result;
}

void start_parse(const std::string& source) {
    open_source_text(source);
    static_cast<void>(parse());
    current.source.reset();
}

}  // namespace

void open_source_text(const std::string& source) {
    current = {};
    current.source.reset(std::tmpfile());
    std::fwrite(source.data(), 1, source.size(), current.source.get());
    std::rewind(current.source.get());
    current.line_number = 1;
}

run_result catch_output(const std::function<void()>& action) {
    standard_output.redirect(nullptr);
    standard_error.redirect(nullptr);
    run_result result;
    try {
        action();
    } catch (const run_failure& failure) {
        result.status = failure.status;
    }
    result.standard_output = standard_output.take_text();
    result.standard_error = standard_error.take_text();
    standard_output.redirect(stdout);
    standard_error.redirect(stderr);
    return result;
}

run_result compile(const run_request& request) {
    const temporary_folder folder;
    {
        std::ofstream stream(request.source_name, std::ios::binary);
        stream << request.source;
    }
    std::vector<std::string> arguments{request.source_name};
    arguments.insert(arguments.end(), request.switches.begin(), request.switches.end());
    run_result result = run_in_folder(arguments);
    result.files = files_in(folder.path());
    result.files.erase(request.source_name);
    return result;
}

run_result run_with_arguments(const std::vector<std::string>& arguments) {
    const temporary_folder folder;
    run_result result = run_in_folder(arguments);
    result.files = files_in(folder.path());
    return result;
}

run_result parse_text(const std::string& source) {
    return catch_output([&] { start_parse(source); });
}

run_result flatten_text(const std::string& source) {
    return catch_output([&] {
        start_parse(source);
        flatten_tree();
    });
}

run_result declare_text(const std::string& source) {
    return catch_output([&] {
        start_parse(source);
        flatten_tree();
        process_declarations();
    });
}

run_result translate_text(const std::string& source) {
    return catch_output([&] {
        start_parse(source);
        flatten_tree();
        process_declarations();
        make_expressions();
    });
}

run_result optimize_text(const std::string& source, void (*last)(), const std::vector<std::string>& switches) {
    return catch_output([&] {
        start_parse(source);
        set_options(switches);
        flatten_tree();
        process_declarations();
        make_expressions();
        for (const optimizer_pass& pass : optimizer_passes()) {
            if (pass.run != nullptr) {
                pass.run();
            }
            if (pass.run == last) {
                break;
            }
        }
    });
}

void set_options(const std::vector<std::string>& switches) {
    std::vector<const char*> pointers;
    for (const std::string& text : switches) {
        pointers.push_back(text.c_str());
    }
    EXPECT_EQ(read_switches(pointers), argument_result::accepted);
}

void start_graph() {
    current = {};
    dfg_create_graph();
}

std::int32_t add_node(std::string_view name, std::int32_t inputs, number_format format, std::string_view component) {
    const std::int32_t slot = dfg_create_node(name, inputs, 1);
    attributes_at(slot).format = format;
    attributes_at(slot).component = component_named(component);
    return slot;
}

void rename_node(std::int32_t slot, std::string_view name) {
    node_at(slot).name = name;
    attributes_at(slot).is = classify_name(name);
}

component_id component_named(std::string_view name) {
    for (const component_row& row : component_rows::table) {
        if (row.name == name) {
            return row.id;
        }
    }
    ADD_FAILURE() << "no component named " << name;
    return component_id::wire;
}

std::string_view component_name(std::int32_t slot) { return row_of(attributes_at(slot).component).name; }

std::int32_t slot_named(std::string_view name, std::size_t position) {
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        if (node_at(slot).name == name && position-- == 0) {
            return slot;
        }
    }
    ADD_FAILURE() << "no node named " << name;
    return 0;
}

std::vector<std::int32_t> slots_with_component(std::string_view component) {
    std::vector<std::int32_t> slots;
    for (std::int32_t slot = 0; slot < dfg_used_slots(); ++slot) {
        if (component_name(slot) == component) {
            slots.push_back(slot);
        }
    }
    return slots;
}

std::vector<std::int32_t> consumers(std::int32_t slot) {
    std::vector<std::int32_t> slots;
    for (const dfg_link* link = consumers_of(node_at(slot)); link != nullptr; link = link->next) {
        slots.push_back(link->node);
    }
    return slots;
}

std::int32_t driver(std::int32_t slot, std::int32_t port) {
    const dfg_source* source = source_of(node_at(slot), port);
    return source != nullptr ? source->node : no_slot;
}

std::vector<std::string> labels() {
    std::vector<std::string> texts;
    for (const std::string_view entry : current.labels) {
        texts.emplace_back(entry);
    }
    if (!texts.empty()) {
        texts.pop_back();
    }
    return texts;
}

}  // namespace xfc::test
