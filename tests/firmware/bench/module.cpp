// SPDX-License-Identifier: MIT

// The library's entry point. gpsim loads the library with "module library" and "module load bench bench" after the
// processor and its program. CALVORN_BENCH_SOCKET contains the file descriptor of the socket for script commands.

#include <array>
#include <cstdlib>
#include <iostream>
#include <memory>

#include <gpsim/modules.h>

#include "circuit.h"
#include "script.h"

namespace {

class BenchModule : public Module
{
public:
    BenchModule(const char *name, pic_processor &chip, int socket)
        : Module(name, "the bench around the chip")
        , circuit_(chip)
        , script_(circuit_, socket)
    {
    }

    static Module *construct(const char *name)
    {
        auto *chip = dynamic_cast<pic_processor *>(get_active_cpu());
        const char *socket = std::getenv("CALVORN_BENCH_SOCKET");
        if (!chip || !socket) {
            std::cerr << "The bench needs a processor, and CALVORN_BENCH_SOCKET.\n";
            std::exit(1);
        }
        return new BenchModule(name, *chip, std::atoi(socket));
    }

private:
    bench::Circuit circuit_;
    bench::Script script_;
};

std::array<Module_Types, 2> types{{{{"bench", "bench"}, BenchModule::construct}, {{nullptr, nullptr}, nullptr}}};

} // namespace

extern "C" Module_Types *get_mod_list()
{
    return types.data();
}
