#include "base/deployment.h"

#include "tests/support/machine_fixture.h"

namespace {

using vanta::Deployment;
using vanta::ParseDeployment;
using vanta::String;

const std::string kKey(64, 'a');

class DeploymentTest : public testing_support::OnMachine {};

TEST_F(DeploymentTest, AllFieldsAreRead) {
  const Deployment block = ParseDeployment(
      "VANTADEPLOY 1\r\npublisher=maker.example\r\nstatistics=s.example\n"
      "upgrade=u.example\n"
      "agreement=a.example\nmaker_key=" +
      kKey + "\nmaker_key=" + std::string(62, '0') + "Ff");
  EXPECT_EQ(block.publisher, String(TEXT("maker.example")));
  EXPECT_EQ(block.statistics_host, String(TEXT("s.example")));
  EXPECT_EQ(block.upgrade_host, String(TEXT("u.example")));
  EXPECT_EQ(block.agreement_host, String(TEXT("a.example")));
  ASSERT_EQ(block.maker_keys.size(), 2u);
  EXPECT_EQ(block.maker_keys[0][0], 0xaa);
  EXPECT_EQ(block.maker_keys[1][31], 0xff);
}

TEST_F(DeploymentTest, AnythingWithoutTheFirstLineGivesTheDefaults) {
  for (const std::string text :
       {"", "\n", "publisher=x.example", "VANTADEPLOY 2\npublisher=x.example", "VANTADEPLOY 10\npublisher=x.example"}) {
    EXPECT_EQ(ParseDeployment(text).publisher, Deployment().publisher) << text;
  }
}

TEST_F(DeploymentTest, BadKeysGiveNoKey) {
  for (const std::string& key : {std::string(), kKey + "a", kKey.substr(1), "g" + kKey.substr(1), " " + kKey}) {
    EXPECT_TRUE(ParseDeployment("VANTADEPLOY 1\nmaker_key=" + key).maker_keys.empty()) << key;
  }
}

TEST_F(DeploymentTest, EmptyAndUnknownValuesAreNoValues) {
  EXPECT_EQ(ParseDeployment("VANTADEPLOY 1\npublisher=\nunknown=1\n=\nnothing").publisher, Deployment().publisher);
}

}  // namespace
