// The types that the libraries throw: what every one of them has to be.

#include "Orrenby/Foundation/Outbox/OutboxError.hpp"
#include "Orrenby/Platform/Coding/DecodingError.hpp"
#include "Orrenby/Platform/Coding/EncodingError.hpp"
#include "Orrenby/Platform/Coding/JSONReadError.hpp"
#include "Orrenby/Platform/Engines/Rx/DisposedError.hpp"
#include "Orrenby/Platform/Errors/AnyError.hpp"
#include "Orrenby/Platform/Errors/NSError.hpp"
#include "Orrenby/Platform/Net/BodyStreamError.hpp"
#include "Orrenby/Platform/Store/StoreError.hpp"
#include "Orrenby/Platform/Text/PercentDecodingError.hpp"
#include "Orrenby/Platform/Text/RegularExpressionError.hpp"
#include "Orrenby/Standard/JSON/Encodable+JSON.hpp"
#include "Orrenby/Standard/JSON/JSONError.hpp"
#include "Orrenby/Standard/JSON/JSONPointerError.hpp"
#include "Orrenby/Testing/MarbleScript.hpp"
#include "Orrenby/Utilities/LosslessDataConvertibleError.hpp"
#include "Orrenby/Utilities/ServiceDecoder/ServiceDecoderError.hpp"
#include "Orrenby/Utilities/Streams/More/Await.hpp"
#include <dlfcn.h>
#include <exception>
#include <gtest/gtest.h>
#include <string>
#include <type_traits>
#include <typeinfo>

using namespace orrenby;

namespace {

template <class Error> class ThrownType : public ::testing::Test {};
using Errors = ::testing::Types<AnyError, NSError, DecodingError, EncodingError, JSONReadError,
    StreamsRx::DisposedError, BodyStreamError, StoreError, PercentDecodingError, RegularExpressionError,
    InvalidJSONTypeError, JSONError, JSONPointerError, LosslessDataConvertibleError, ServiceDecoderError,
    Streams::StreamEndedError, OutboxError, orrenby::testing::MarbleError>;
TYPED_TEST_SUITE(ThrownType, Errors);

TYPED_TEST(ThrownType, IsAnExceptionOfTheStandardLibrary)
{
    EXPECT_TRUE((std::is_base_of_v<std::exception, TypeParam>));
    EXPECT_TRUE((std::is_convertible_v<TypeParam*, std::exception*>)) << "a handler finds one base only";
}

TYPED_TEST(ThrownType, IsKnownAcrossTheEdgeOfItsLibrary)
{
    const auto symbol = std::string("_ZTI") + typeid(TypeParam).name();

    EXPECT_NE(dlsym(RTLD_DEFAULT, symbol.c_str()), nullptr) << symbol;
}

} // namespace
