// Times each phase of the compiler in process: parse, flatten and declarations, translation, optimizer, output.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <utility>

#include "exact/dfg/dfg.h"
#include "exact/dfg/expressions.h"
#include "exact/dfg/symbol_table.h"
#include "exact/driver/compiler.h"
#include "exact/driver/switches.h"
#include "exact/emit/emitter.h"
#include "exact/frontend/label_list.h"
#include "exact/frontend/parse_tree.h"
#include "exact/frontend/parser.h"
#include "exact/frontend/scanner.h"
#include "exact/optimizer/optimizer.h"
#include "exact/run/compilation.h"
#include "exact/run/console.h"
#include "program_shapes.h"

namespace {

using namespace xfc;

enum class phase { parse, flatten, translate, optimize, emit };

void parse_program(const std::string& source) {
    current = {};
    current.source.reset(std::tmpfile());
    std::fwrite(source.data(), 1, source.size(), current.source.get());
    std::rewind(current.source.get());
    current.line_number = 1;
    benchmark::DoNotOptimize(parse());
    current.source.reset();
}

void run_phase(phase which, const std::string& source) {
    switch (which) {
        case phase::parse:
            parse_program(source);
            break;
        case phase::flatten:
            flatten_tree();
            process_declarations();
            break;
        case phase::translate:
            make_expressions();
            break;
        case phase::optimize:
            optimize_datapath();
            break;
        case phase::emit:
            emit_vhdl(derive_base_name("prog.c"));
            break;
    }
}

void time_phase(benchmark::State& state, phase timed, const bench::program_shape& shape) {
    const std::string source = shape.generate(state.range(0));
    standard_output.redirect(nullptr);
    for (auto _ : state) {
        state.PauseTiming();
        static_cast<void>(read_switches({}));
        for (int before = 0; before < static_cast<int>(timed); ++before) {
            run_phase(static_cast<phase>(before), source);
        }
        state.ResumeTiming();
        run_phase(timed, source);
        state.PauseTiming();
        static_cast<void>(standard_output.take_text());
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

}  // namespace

int main(int argument_count, char** arguments) {
    std::filesystem::current_path(std::filesystem::temp_directory_path());
    constexpr std::pair<const char*, phase> phases[] = {{"parse", phase::parse},
                                                        {"flatten_and_declare", phase::flatten},
                                                        {"translate", phase::translate},
                                                        {"optimize", phase::optimize},
                                                        {"emit", phase::emit}};
    for (const bench::program_shape& shape : bench::program_shapes()) {
        for (const auto& [name, which] : phases) {
            const std::int64_t operators = std::min<std::int64_t>(shape.largest_size / 10, 100000);
            benchmark::RegisterBenchmark(
                (std::string(shape.name) + "/" + name).c_str(),
                [which = which, &shape](benchmark::State& state) { time_phase(state, which, shape); })
                ->Arg(operators)
                ->Unit(benchmark::kMillisecond);
        }
    }
    benchmark::Initialize(&argument_count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
