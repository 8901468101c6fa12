#include "flow/emit/host_model.h"

#include <gtest/gtest.h>

#include "components/component_table.h"
#include "flow/emit/library_files.h"
#include "flow/emit/model_sources.h"
#include "model/model_list.h"

namespace xfc::flow {
namespace {

std::size_t count_of(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

TEST(model_sources, of_every_component_stand_behind_what_they_include_and_once) {
    std::set<std::string_view> all;
    for (const component_model_row& row : component_models()) {
        const auto sources = model_sources_for({row.name}, library_folder());
        ASSERT_TRUE(sources.has_value()) << row.name;
        const std::size_t bus = sources->text.find("using bus_bits");
        const std::size_t model = sources->text.find("bus_bits " + std::string(row.name) + "(");
        EXPECT_NE(model, std::string::npos) << row.name;
        EXPECT_LT(bus, model) << row.name;
        EXPECT_EQ(sources->text.find("#include"), std::string::npos) << row.name;
        all.insert(row.name);
    }
    const auto sources = model_sources_for(all, library_folder());
    ASSERT_TRUE(sources.has_value());
    EXPECT_EQ(count_of(sources->text, "using bus_bits"), 1U);
    EXPECT_EQ(count_of(sources->text, "struct component_generics"), 1U);
    EXPECT_TRUE(sources->standard_headers.contains("cstdint"));
    for (const component_model_row& row : component_models()) {
        const std::string name(row.name);
        EXPECT_EQ(count_of(sources->text, "namespace xfc::model::" + name + "_steps {\n"), 1U) << name;
        EXPECT_EQ(count_of(sources->text, "using " + name + "_steps::" + name + ";\n"), 1U) << name;
    }
}

TEST(model_sources, of_an_unknown_component_or_in_a_library_without_models_are_missing) {
    EXPECT_FALSE(model_sources_for({"no_such_component"}, library_folder()).has_value());
    EXPECT_FALSE(model_sources_for({"fp_exp"}, "/no/such/folder").has_value());
}

TEST(host_names, that_mean_something_get_an_underscore) {
    EXPECT_EQ(host_name("class", host_language::c), "class_");
    EXPECT_EQ(host_name("class", host_language::python), "class_");
    EXPECT_EQ(host_name("lambda", host_language::python), "lambda_");
    EXPECT_EQ(host_name("lambda", host_language::c), "lambda");
    EXPECT_EQ(host_name("xor_eq", host_language::c), "xor_eq_");
    for (const std::string name : {"INT32_MAX", "UINT_LEAST8_WIDTH", "SIZE_MAX", "PTRDIFF_MIN", "WCHAR_MAX", "NULL"}) {
        EXPECT_EQ(host_name(name, host_language::c), name + "_");
        EXPECT_EQ(host_name(name, host_language::python), name);
    }
    for (const char* name : {"x_0", "INT32_MAX_1", "GAIN_MAX", "INTERVAL"}) {
        EXPECT_EQ(host_name(name, host_language::c), name);
    }
}

}  // namespace
}  // namespace xfc::flow
