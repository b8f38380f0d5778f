// The command's part in the conversation, on both systems; tests/cli/transcripts/link.txt has the rest.
#include "tests/link/stand_in.h"
#include "velmora/platform/files.h"

namespace velmora::testing {
namespace {

class LinkCommand : public WithStandIn {
 protected:
  static void ExpectRefused(const Ran& ran, const std::string& what) {
    EXPECT_EQ(ran.status, 1) << ran.out << ran.err;
    EXPECT_NE(ran.err.find(what), std::string::npos) << ran.err;
  }
};

TEST_F(LinkCommand, SendAndListenTalkToServe) {
  ExpectRefused(RunVelmora({"link", "send", "hej"}), "does not answer");
  const TemporaryFolder project;
  Serve(ReadBytes(PathFromSystem(Example("conversation.txt"))));
  const Ran sent = RunVelmora({"link", "send", "Hål 7", "--project", AsArgument(project.Path()), "två ord"});
  EXPECT_EQ(sent.status, 0) << sent.err;
  EXPECT_TRUE(Sees("disconnect,,"));
  EXPECT_EQ(Seen("poke"), "poke,-1,10000 " + ToUtf8(project.Path()) + "\npoke,-1,Hål 7\npoke,-1,två ord\n");

  const Ran heard = RunVelmora({"link", "listen", "--count", "5", "--csv"});
  EXPECT_EQ(heard.status, 0) << heard.err;
  EXPECT_EQ(heard.out,
            "message,wparam,lparam\n1024,1117,7\n1024,1119,0\n1024,1120,0\n1024,1121,2\n1024,1122,84\n");
  EXPECT_TRUE(Sees("2,disconnect,,"));

  Serve("greet 5 -1\nend\n");
  ExpectRefused(RunVelmora({"link", "listen"}), "has ended");
}

}  // namespace
}  // namespace velmora::testing
