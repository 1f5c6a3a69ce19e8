// SPDX-License-Identifier: MIT

// The library that gpsim loads: "module library", then "module load bench bench". The processor and its program must
// have been loaded before. The number of the socket with the script stands in CALVORN_BENCH_SOCKET.

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
