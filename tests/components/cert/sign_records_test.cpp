#include <gtest/gtest.h>
#include <openssl/obj_mac.h>

#include "components/cert/cert_interface.h"
#include "components/cert/sign_job.h"
#include "components/utils/base64.h"
#include "components/utils/text.h"

namespace zorvanelink::components::cert {
namespace {

// What the record makes of the text, written again.
template <class Record, class... Type>
std::string again(std::string const& text, Type... type) {
    Record record;
    return record.Deserial(text) ? record.Serial(type...) : "unreadable";
}

template <class Record, class... Type>
void expectForm(std::string const& text, Type... type) {
    EXPECT_EQ(again<Record>(text, type...), text);
    Record record;
    EXPECT_TRUE(record.Deserial(text));
    for (std::string const& wrong :
         {text + "\r", text.substr(0, text.rfind('\r')), std::string()}) {
        EXPECT_FALSE(record.Deserial(wrong)) << utils::EscapeControls(wrong);
        EXPECT_EQ(record.Serial(type...), Record{}.Serial(type...)) << "not back at its defaults";
    }
}

TEST(SignRecords, TextsThatCross) {
    expectForm<RSAMethReqArgs>("2\r3\r0\r1\r5\rYWJj", kRSAPrivEnc);
    expectForm<RSASignReqArgs>("6\r672\rYWJj\r3");
    expectForm<RSAVerfyReqArgs>("7\r672\rYWJj\r3\rc2ln\r4");
    expectForm<RSARepData>("2\r6\r\r0\r0", kRSAPrivEnc);
    expectForm<ECCReqArgs>("1172\rYWJj\r3");
    expectForm<ECCRepData>("1\r72\rYWJj\r3");
    EXPECT_EQ(again<RSASignReqArgs>("6\r99999999999999999999\r=\r-7x"), "6\r2147483647\r\r-7");
    std::pair<char const*, int> const types[] = {{"0\r", 0}, {"7\r1", 7}, {"8\r1", 8},
                                                 {"6", 8},   {"-1\r", 8}, {"", 8}};
    for (auto const& [text, type] : types) {
        EXPECT_EQ(GetRSAType(text), type) << text;
    }
}

TEST(SignRecords, WhatTheFrontEndMakesOfARequest) {
    auto const request = [](std::size_t size, int says) {
        return fmt::format("2\r{}\r0\r3\r0\r{}", says,
                           utils::Base64Encode(std::string(size, 'x'), false));
    };
    std::pair<std::string, int> const cases[] = {
        {request(1024, 1024), 1024}, {request(1025, 1025), 0},   {request(8, 7), 0},
        {request(8, 0), -1},         {request(8, -8), -1},       {"2\r8\r0\r3\r0", -1},
        {"6\r672\rYWJj\r3", 3},      {"6\r672\rYWJj\r4", 0},     {"7\r672\rYWJj\r3\rc2ln\r4", 0},
        {"3\r3\r0\r1\r0\rYWJj", 0},  {"6\r672\rYWJj\r3\r0", -1}, {"no request", -1},
    };
    for (auto const& [text, bytes] : cases) {
        auto const job = ReadSignJob(text);
        EXPECT_EQ(job ? static_cast<int>(job->data.size()) : -1, bytes)
            << utils::EscapeControls(text).substr(0, 40);
    }
    SignJob const job = *ReadSignJob("6\r672\rYWJj\r3");
    EXPECT_EQ(utils::ConvertHexToStr(BytesToPad(job)),
              "3014300D0609608648016503040201050004"
              "03616263");
    EXPECT_EQ(BytesToPad({kRSASign, NID_md5_sha1, 0, "both"}), "both");
    EXPECT_EQ(BytesToPad({kRSASign, 1 << 20, 0, "abc"}), "");
    EXPECT_EQ(SignAnswer(job, "sig"), "6\r1\rc2ln\r3\r0");
    EXPECT_EQ(SignAnswer(job, ""), "2\r6\r\r0\r0");
}

TEST(CertInterface, WithoutProviderAndKey) {
    CertInterface& cert = CertInterface::Instance();
    EXPECT_EQ(cert.SetPinCode("1234") + cert.CreatePinUserName("anna"), -2);
    EXPECT_TRUE(cert.EnumCerts().empty() && cert.EnumGmCerts().empty());
    struct One : CertProvider {
        std::vector<CertInfo> EnumCerts() override { return std::vector<CertInfo>(1); }
        std::vector<GmCertInfo> EnumGmCerts() override { return std::vector<GmCertInfo>(2); }
    } one;
    CertInterface::handler_ = &one;
    EXPECT_EQ(cert.EnumCerts().size() + cert.EnumGmCerts().size(), 3U);
    CertInterface::handler_ = nullptr;
    EXPECT_FALSE(cert.InitByCertContent(nullptr, "no certificate", {}));
    EXPECT_FALSE(cert.InitByCertData(nullptr, "YWJj", true, {}));
    EXPECT_EQ(cert.ExportCertString(), "");
    EXPECT_EQ(cert.GetRsaModulusSize() + cert.GetECCModulusSize(), 0);
    EXPECT_EQ(cert.RSA_meth_init() + cert.RSA_meth_finish(), -2);
    EXPECT_EQ(cert.RSA_meth_sign({}).data + cert.ECC_meth_sign({}).data, "");
}

}  // namespace
}  // namespace zorvanelink::components::cert
