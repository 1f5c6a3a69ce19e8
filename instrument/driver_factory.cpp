// SPDX-License-Identifier: MIT
#include "instrument/driver_factory.h"

#include "instrument/lpt_driver.h"
#include "instrument/pic_driver.h"
#include "instrument/vna_driver.h"

namespace calvorn {

std::unique_ptr<AcquisitionDriver> makeDriver(const DriverContext &context)
{
    switch (context.configuration.interfaceType) {
    case kInterfacePic:
        return std::make_unique<PicDriver>(context);
    case kInterfaceLpt:
        return std::make_unique<LptDriver>(context);
    case kInterfaceVna:
        return std::make_unique<VnaDriver>(context);
    default:
        return nullptr;
    }
}

} // namespace calvorn
