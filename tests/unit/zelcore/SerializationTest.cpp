#include <boost/cstdint.hpp>
#include <boost/make_shared.hpp>
#include <gtest/gtest.h>
#include <zelcore/Serialization.h>

using namespace zelcore::serialization;
using zelcore::utf8string;

namespace {

Variant Node(const boost::any& value) { return boost::make_shared<boost::any>(value); }

Variant Sample() {
    boost::any object;
    SetInObject(object, "text", utf8string("x"));
    SetInObject(object, "number", boost::int32_t(7));
    SetInObject(object, "wide", boost::int64_t(5000000000));
    SetInObject(object, "wideButSmall", boost::int64_t(-9));
    SetInObject(object, "real", 1.0);
    SetInObject(object, "flag", true);
    SetInObject(object, "nothing", boost::any());
    return Node(object);
}

}  // namespace

TEST(SerializationTest, CallIsAnObjectOfMethodAndParameters) {
    boost::any parameters;
    AppendToArray(parameters, utf8string("one"));
    AppendToArray(parameters, boost::int32_t(2));
    const Variant call = BuildCall("some.Method", parameters);
    EXPECT_EQ(ToJson(*call), R"({"method":"some.Method","params":["one",2]})");
}

TEST(SerializationTest, CallWithoutParametersHasAnEmptyArray) {
    EXPECT_EQ(ToJson(*BuildCall("m", boost::any())), R"({"method":"m","params":[]})");
}

TEST(SerializationTest, CallRefusesParametersThatAreNoArray) {
    EXPECT_THROW(BuildCall("m", utf8string("x")), SerializationError);
}

TEST(SerializationTest, AppendingMakesAnArrayOfNothingAndRefusesAnythingElse) {
    boost::any array;
    AppendToArray(array, boost::any());
    EXPECT_EQ(boost::any_cast<Array&>(array).size(), 1u);
    boost::any text = utf8string("x");
    EXPECT_THROW(AppendToArray(text, true), SerializationError);
    EXPECT_EQ(boost::any_cast<utf8string>(text), "x");
}

TEST(SerializationTest, SettingMakesAnObjectOfNothingAndRefusesAnythingElse) {
    boost::any object;
    SetInObject(object, "a", true);
    SetInObject(object, "a", false);
    EXPECT_EQ(ToJson(object), R"({"a":false})");
    boost::any array = Array();
    EXPECT_THROW(SetInObject(array, "a", true), SerializationError);
}

TEST(SerializationTest, MembersAreFoundByKey) {
    const Variant object = Sample();
    ASSERT_TRUE(GetVariantInObject(object, "flag"));
    EXPECT_TRUE(GetVariantInObject(object, "nothing")->empty());
    EXPECT_FALSE(GetVariantInObject(object, "missing"));
    EXPECT_FALSE(GetVariantInObject(Variant(), "flag"));
    EXPECT_FALSE(GetVariantInObject(Node(boost::any()), "flag"));
    EXPECT_FALSE(GetVariantInObject(Node(Array()), "flag"));
}

TEST(SerializationTest, TypedAccessReadsMatchingMembers) {
    const Variant object = Sample();
    utf8string text;
    int number = 0;
    bool flag = false;
    EXPECT_TRUE(GetInObject(object, "text", text));
    EXPECT_EQ(text, "x");
    EXPECT_TRUE(GetInObject(object, "number", number));
    EXPECT_EQ(number, 7);
    EXPECT_TRUE(GetInObject(object, "wideButSmall", number));
    EXPECT_EQ(number, -9);
    EXPECT_TRUE(GetInObject(object, "flag", flag));
    EXPECT_TRUE(flag);
}

TEST(SerializationTest, TypedAccessLeavesTheValueAloneWhenTheTypeDiffers) {
    const Variant object = Sample();
    utf8string text = "before";
    int number = 3;
    bool flag = true;
    EXPECT_FALSE(GetInObject(object, "number", text));
    EXPECT_FALSE(GetInObject(object, "missing", text));
    EXPECT_FALSE(GetInObject(Variant(), "text", text));
    EXPECT_FALSE(GetInObject(object, "wide", number)) << "does not fit";
    EXPECT_FALSE(GetInObject(object, "real", number));
    EXPECT_FALSE(GetInObject(object, "flag", number));
    EXPECT_FALSE(GetInObject(object, "text", number));
    EXPECT_FALSE(GetInObject(object, "number", flag));
    EXPECT_FALSE(GetInObject(object, "nothing", flag));
    EXPECT_EQ(text, "before");
    EXPECT_EQ(number, 3);
    EXPECT_TRUE(flag);
}

TEST(SerializationTest, NullMemberPointersReadAsMissingAndWriteAsNull) {
    Object members;
    members["a"] = Variant();
    int number = 3;
    EXPECT_FALSE(GetInObject(Node(members), "a", number));
    EXPECT_EQ(ToJson(members), R"({"a":null})");
}
