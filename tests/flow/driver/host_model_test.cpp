#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <nlohmann/json.hpp>
#include <random>
#include <set>
#include <sstream>

#include "flow/driver/build.h"
#include "flow/driver/commands.h"
#include "flow/emit/model_sources.h"
#include "flow/simulate/design_model.h"
#include "flow/simulate/process.h"
#include "flow/simulate/stimulus.h"
#include "model/model_list.h"

namespace xfc::flow::test {

namespace {

namespace fs = std::filesystem;

/// Bytes of a C structure whose members are these ports, as the host's compiler lays it out.
class c_structure {
public:
    explicit c_structure(std::span<const port> ports) {
        for (const port& one : ports) {
            const auto size = static_cast<std::size_t>((format_bits(one.format) + 7) / 8);
            const std::size_t place = (bytes_.size() + size - 1) / size * size;
            members_.push_back({place, size});
            bytes_.resize(place + size);
        }
        bytes_.resize((bytes_.size() + 8) / 8 * 8);
    }

    void set(const std::vector<std::uint64_t>& bits) {
        for (std::size_t place = 0; place < members_.size(); ++place) {
            std::memcpy(bytes_.data() + members_[place].first, &bits[place], members_[place].second);
        }
    }
    [[nodiscard]] std::vector<std::uint64_t> bits() const {
        std::vector<std::uint64_t> result(members_.size(), 0);
        for (std::size_t place = 0; place < members_.size(); ++place) {
            std::memcpy(&result[place], bytes_.data() + members_[place].first, members_[place].second);
        }
        return result;
    }
    void* data() { return bytes_.data(); }

private:
    std::vector<unsigned char> bytes_;
    std::vector<std::pair<std::size_t, std::size_t>> members_;  ///< offset and size of each, in bytes
};

/// Vectors as simulations have them, and as many of nothing but random bits.
std::vector<std::vector<std::uint64_t>> vectors_for(const graph& source, std::size_t count) {
    std::vector<std::vector<std::uint64_t>> vectors = make_stimulus(source, count, 1, 1).vectors;
    std::mt19937_64 random(7);
    for (std::size_t number = 0; number < count; ++number) {
        std::vector<std::uint64_t> vector;
        for (const port& input : source.inputs()) {
            vector.push_back(random() >> static_cast<unsigned>(64 - format_bits(input.format)));
        }
        vectors.push_back(std::move(vector));
    }
    return vectors;
}

class host_model : public testing::TestWithParam<const char*> {};

TEST_P(host_model, gives_the_bits_of_the_design_s_own_models) {
    command_line line;
    line.source = std::string(SOURCE_FOLDER) + "/" + GetParam();
    line.driver = "c";
    diagnostics messages;
    source_map places;
    compilation_state state{line, messages, places};
    ASSERT_TRUE(run_stages(state, true));
    const auto what = built(state);
    ASSERT_TRUE(what.has_value());
    const temporary_folder folder;
    ASSERT_TRUE(write_files(folder.path(), what->files, messages));
    const std::string name = what->text->name + "_model";
    ASSERT_EQ(run_command({HOST_COMPILER, "-std=c++17", "-O1", "-Wall", "-Wextra", "-Wpedantic", "-Werror", "-shared",
                           "-fPIC", name + ".cpp", "-o", "model.so"},
                          folder.path()),
              0)
        << end_of_log(folder.path());
    void* library = dlopen((folder.path() / "model.so").c_str(), RTLD_NOW);
    ASSERT_NE(library, nullptr) << dlerror();
    using model_function = void (*)(const void*, void*);
    const auto function = reinterpret_cast<model_function>(dlsym(library, name.c_str()));
    ASSERT_NE(function, nullptr);

    const graph& values = state.current->values;
    design_model expected(*state.made);
    c_structure inputs(values.inputs());
    c_structure outputs(values.outputs());
    for (const std::vector<std::uint64_t>& vector : vectors_for(values, 2000)) {
        inputs.set(vector);
        function(inputs.data(), outputs.data());
        ASSERT_EQ(outputs.bits(), expected.outputs_for(vector));
    }
    dlclose(library);
}

// Together they use singles, doubles, integers and booleans, roots, exponentials and logarithms, choices and shifts.
INSTANTIATE_TEST_SUITE_P(examples, host_model,
                         testing::Values("examples/flow/arctangent.c", "examples/flow/crc8.c",
                                         "examples/flow/cubic_spline.c", "examples/flow/db_meter.c",
                                         "examples/flow/fixed_point_mix.c", "examples/flow/sigmoid.c",
                                         "examples/flow/normalize3.c", "tests/flow/hdl/programs/host_names.c"));

TEST(model_sources, of_all_components_compile_together) {
    std::set<std::string_view> all;
    for (const component_model_row& row : component_models()) {
        all.insert(row.name);
    }
    const auto sources = model_sources_for(all, library_folder());
    ASSERT_TRUE(sources.has_value());
    std::string text;
    for (const std::string& header : sources->standard_headers) {
        text += "#include <" + header + ">\n";
    }
    text += "namespace {\n" + sources->text + "}\nconst xfc::component_model all[] = {";
    for (const std::string_view name : all) {
        text += "xfc::model::" + std::string(name) + ", ";
    }
    const temporary_folder folder;
    std::ofstream(folder.path() / "all.cpp") << text << "};\nint main() { return all[0] == nullptr; }\n";
    EXPECT_EQ(run_command({HOST_COMPILER, "-std=c++17", "-fsyntax-only", "-Wall", "-Wextra", "all.cpp"}, folder.path()),
              0);
    EXPECT_EQ(end_of_log(folder.path()), "");
}

TEST(build_with_a_driver, names_its_files_and_refuses_other_languages) {
    const temporary_folder folder;
    const std::string source = (folder.path() / "sum.c").string();
    std::ofstream(source) << "float sum(float a, float b) { return a + b; }\n";
    std::ostringstream out;
    std::ostringstream error;
    EXPECT_EQ(run(std::vector<std::string>{"build", source, "--driver", "python", "-o", folder.path().string()}, out,
                  error, false),
              0)
        << error.str();
    for (const char* name : {"sum_model.h", "sum_model.cpp", "sum_model.py"}) {
        EXPECT_NE(out.str().find((folder.path() / name).string() + "\n"), std::string::npos) << name;
        EXPECT_TRUE(fs::exists(folder.path() / name)) << name;
    }
    out.str("");
    EXPECT_EQ(run(std::vector<std::string>{"build", source, "--driver", "c", "--lang", "vhdl", "--json", "-o",
                                           folder.path().string()},
                  out, error, false),
              0);
    const nlohmann::json files = nlohmann::json::parse(out.str())["files"];
    EXPECT_EQ(files[files.size() - 1], (folder.path() / "sum_model.cpp").string());
    for (const nlohmann::json& file : files) {
        EXPECT_TRUE(fs::exists(file.get<std::string>())) << file;
    }
    EXPECT_EQ(run(std::vector<std::string>{"build", source, "--driver", "fortran"}, out, error, false), 1);
    EXPECT_NE(error.str().find("--driver: fortran not in {c,python}"), std::string::npos) << error.str();
}

TEST(build_with_a_driver, writes_nothing_over_a_header_of_the_program) {
    const temporary_folder folder;
    const std::string header = (folder.path() / "sum_model.h").string();
    const std::string source = (folder.path() / "sum.c").string();
    std::ofstream(header) << "typedef float number;\n";
    std::ofstream(source) << "#include \"sum_model.h\"\nnumber sum(number a, number b) { return a + b; }\n";
    std::ostringstream out;
    std::ostringstream error;
    EXPECT_EQ(run(std::vector<std::string>{"build", source, "--driver", "c", "-o", folder.path().string()}, out, error,
                  false),
              1);
    EXPECT_NE(error.str().find("'" + header + "' would be written over what is read"), std::string::npos)
        << error.str();
    EXPECT_EQ(read_file(header), "typedef float number;\n");
    EXPECT_FALSE(fs::exists(folder.path() / "sum.v"));
}

}  // namespace

}  // namespace xfc::flow::test
