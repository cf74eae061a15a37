/* What a redraw of "computer usage" costs as computers join the network. */
#include "status/computers.h"
#include "bench/bench_platform.h"
#include "bench/figures.h"
#include "bench/router_folder.h"
#include "bench/system_calls.h"
#include "core/actions.h"
#include "core/screen_table.h"
#include "core/timer.h"
#include "gfx/utf8.h"
#include "lang/language.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <malloc.h>
#include <string>

static constexpr const char *AMOUNT_FILE = "/tmp/lcd/network_status/speed/total_pc_data";
static constexpr const char *LEASE_FILE = "/var/udhcpd.leases";
static constexpr int LEASE_BYTES = 64;
static constexpr int LEASES_A_READ = 32; // what the daemon asks of the lease file at once
static constexpr int AMOUNT_READ = 1024; // and of the amounts
static constexpr int CALLS_A_LOAD = 3;   // open, read, close
static constexpr int REFRESH_TICKS = 6;  // from one redraw to the next
static constexpr int ROWS_IN_VIEW = 3;

static const int computer_counts[] = {1, 10, 50, 100, 253};

static std::string amount_file(int computers)
{
    std::string lines;
    for (int host = 1; host <= computers; host++)
        lines += std::to_string(host) + " " + std::to_string(host * 1500000) + "\n";
    return lines;
}

static std::string lease_file(int computers)
{
    std::string leases;
    for (int host = 1; host <= computers; host++) {
        char lease[LEASE_BYTES + 1] = {};
        lease[19] = static_cast<char>(host);
        snprintf(lease + 24, 40, "notebook-%d", host);
        leases.append(lease, LEASE_BYTES);
    }
    return leases;
}

static void redraw()
{
    tick_count += REFRESH_TICKS;
    current_screen->handler(nullptr, ACTION_TICK);
}

/* The system calls of finding each computer's lease, those in file order up to the one that is looked for. */
static size_t calls_of_leases(int computers)
{
    size_t calls = 0;
    for (int place = 0; place < computers; place++) {
        const int full = computers / LEASES_A_READ;
        const int piece = place / LEASES_A_READ;
        calls += 1 + static_cast<size_t>(piece + 1 + (piece == full ? 1 : 0)) + 1;
    }
    return calls;
}

/* The system calls of measuring every row's amount, prefix and name. */
static size_t calls_of_measuring(int computers)
{
    size_t loads = 0;
    for (int i = 0; i < computers; i++)
        for (const char *text : {computer_rows[i].value, computer_rows[i].prefix, computer_rows[i].label})
            loads += strlen(text) + 1;
    return loads * CALLS_A_LOAD;
}

static double redraw_milliseconds()
{
    std::vector<double> times;
    for (int i = 0; i < 15; i++) {
        const double start = processor_time();
        redraw();
        times.push_back((processor_time() - start) * 1e3);
        bench_take_frames();
    }
    return median(times);
}

static ptrdiff_t open_descriptors()
{
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

/* What one redraw leaves behind: the descriptors and the bytes of heap that are held after it and were not before. */
struct Held {
    double descriptors, bytes;
};

static Held held_by_redraw()
{
    const ptrdiff_t descriptors = open_descriptors();
    const size_t bytes = mallinfo2().uordblks;
    redraw();
    const size_t bytes_after = mallinfo2().uordblks;
    bench_take_frames();
    return {static_cast<double>(open_descriptors() - descriptors),
            static_cast<double>(bytes_after) - static_cast<double>(bytes)};
}

/* The figures of one network. What is left of the calls draws the rows in view and sends the frame. */
struct Cost {
    size_t calls, leases, measuring, rest;
    double milliseconds;
    Held held;
};

static Cost measure(const RouterFolder &router, int computers)
{
    router.write(AMOUNT_FILE, amount_file(computers));
    router.write(LEASE_FILE, lease_file(computers));
    switch_screen("computer usage");
    redraw();
    bench_take_frames();

    Cost cost = {};
    cost.calls = trace_system_calls(redraw).size();
    bench_take_frames();
    cost.leases = calls_of_leases(computers);
    cost.measuring = calls_of_measuring(computers);
    const size_t amounts = amount_file(computers).size() / AMOUNT_READ;
    cost.rest = cost.calls - cost.leases - cost.measuring - amounts;
    cost.milliseconds = redraw_milliseconds();
    cost.held = held_by_redraw();
    return cost;
}

static void print_cost(int computers, const Cost &cost)
{
    char text[128];
    snprintf(text, sizeof text, "%3d computers: %5zu calls (leases %4zu, measuring %5zu, the rest %zu)", computers,
             cost.calls, cost.leases, cost.measuring, cost.rest);
    print_figure(text, cost.milliseconds, "ms");
}

int main()
{
    setvbuf(stdout, nullptr, _IOLBF, 0);
    const RouterFolder router;
    bench_open_root(router.path());
    load_language(0);

    Held held = {};
    size_t first_rest = 0, most_rest = 0; // of the networks that fill the view
    for (const int computers : computer_counts) {
        const Cost cost = measure(router, computers);
        print_cost(computers, cost);
        held.descriptors = std::max(held.descriptors, cost.held.descriptors);
        held.bytes = std::max(held.bytes, cost.held.bytes);
        if (computers > ROWS_IN_VIEW) {
            first_rest = first_rest ? first_rest : cost.rest;
            most_rest = std::max(most_rest, cost.rest);
        }
    }
    print_figure("computers: calls by which the rest grows", static_cast<double>(most_rest - first_rest), "", 0);
    print_figure("computers: descriptors held between redraws", held.descriptors, "", 0);
    print_figure("computers: bytes of heap held between redraws", held.bytes, "", 0);
    return figures_status();
}
