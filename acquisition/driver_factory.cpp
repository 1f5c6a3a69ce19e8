// SPDX-License-Identifier: MIT
#include "acquisition/driver_factory.h"

#include "acquisition/lpt_driver.h"
#include "acquisition/pic_driver.h"
#include "acquisition/vna_driver.h"

namespace calvorn {

AcquisitionDriver *makeDriver(const DriverContext &context, QObject *parent)
{
    switch (context.configuration.interfaceType) {
    case kInterfacePic:
        return new PicDriver(context, parent);
    case kInterfaceLpt:
        return new LptDriver(context, parent);
    case kInterfaceVna:
        return new VnaDriver(context, parent);
    default:
        return nullptr;
    }
}

} // namespace calvorn
