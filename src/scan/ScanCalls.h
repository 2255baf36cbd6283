#pragma once

#include <vector>

#include <boost/any.hpp>
#include <boost/shared_ptr.hpp>
#include <zelaudiofilterhost/PluginLocator.h>
#include <zelcore/ustring.h>

namespace zelaudiofilterhostui {

/// What the scanner says of its progress. Of what a reply lacks, or has in another type, the defaults stay.
struct ScanInfo {
    zelaudiofilterhost::PluginLocator locator;  ///< the plug-in that is next; empty when there is none
    zelcore::ustring subcomponent;              ///< text to show behind its name
    unsigned progress = 0;                      ///< how many plug-ins this scanner has reached
    unsigned total = 0;                         ///< how many plug-ins this scanner will scan
    bool goOn = false;                          ///< whether there is a plug-in to scan
};

/// The requests that the scan client sends, and the one reply that it reads. Any thread.
class ScanCalls {
public:
    typedef boost::shared_ptr<boost::any> Variant;

    static Variant Connect(const zelcore::ustring& registryPath, const zelcore::ustring& bannedPath,
                           const zelcore::ustring& permanentBannedPath, const zelcore::ustring& scanFilePath);
    static Variant BeginScanForPlugins(const std::vector<zelaudiofilterhost::PluginLocator>& locators);
    static Variant GetScanInfo();
    static Variant ScanOneEntity();

    static ScanInfo ReadScanInfo(const Variant& reply);
};

}  // namespace zelaudiofilterhostui
