#include "platform/http/endpoint/ServiceEndpoint.h"

#include <gtest/gtest.h>

namespace glimmerly {
namespace {

TEST(ServiceEndpoint, AppendsToTheBaseOrSaysWhyNot) {
    const std::pair<const char*, const char*> cases[] = {
        {"https://a.example", "https://a.example/api/x"},
        {" \n a.example/ \t", "https://a.example/api/x"},
        {"http://127.0.0.1:8080/v1", "http://127.0.0.1:8080/v1/api/x"},
        {"HTTPS://a.example/v1//?q=1", "https://a.example/v1//api/x?q=1"},
        {"https://[::1]:8443", "https://[::1]:8443/api/x"},
    };
    for (const auto& [base, url] : cases)
        EXPECT_EQ(serviceEndpoint(base, "api/x"), url) << base;
    for (const char* invalid : {"https://", "https://[::1", "https://a b.example", "http://a:99999"})
        EXPECT_EQ(serviceEndpoint(invalid, "api/x"), std::unexpected(ServiceEndpointError::invalid))
            << invalid;
    EXPECT_EQ(serviceEndpoint(" \r\n", "api/x"), std::unexpected(ServiceEndpointError::notConfigured));
    EXPECT_FALSE(isServiceConfigured("\n"));
}

} // namespace
} // namespace glimmerly
