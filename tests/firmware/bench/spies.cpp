// SPDX-License-Identifier: MIT
#include "spies.h"

#include <string>

namespace bench {

RegisterSpy::RegisterSpy(Processor *chip, unsigned int place)
    : Register(chip, ("spy" + std::to_string(place)).c_str())
    , spied_(chip->registers[place])
{
    setAddress(place);
    setReplaced(spied_);
    chip->registers[place] = this;
}

unsigned int RegisterSpy::get()
{
    if (aboutToRead)
        aboutToRead();
    const unsigned int content = spied_->get();
    return takes ? takes() : readAs ? readAs(content) : content;
}

unsigned int RegisterSpy::get_value()
{
    const unsigned int content = spied_->get_value();
    return readAs ? readAs(content) : content;
}

void RegisterSpy::put(unsigned int content)
{
    if (replaces) {
        replaces(content);
        return;
    }
    const unsigned int before = spied_->get_value();
    spied_->put(content);
    if (written)
        written(before, content);
}

void RegisterSpy::reset(RESET_TYPE kind)
{
    spied_->reset(kind);
    if (wasReset)
        wasReset();
}

RegisterValue RegisterSpy::getRV()
{
    RegisterValue content = spied_->getRV();
    content.data = get();
    return content;
}

void RegisterSpy::putRV(RegisterValue content)
{
    const unsigned int before = spied_->get_value();
    spied_->putRV(content);
    if (written)
        written(before, content.data);
}

} // namespace bench
