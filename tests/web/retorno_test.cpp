// The return file's layout, from warnings files written by hand: headings, masks, indents and
// the cut of long texts, for both kinds of file.
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "advertencias.hpp"
#include "arquivos.hpp"
#include "registro.hpp"
#include "web/retorno.hpp"

namespace quorv::teste {
namespace {

using web::LinhasDoAviso;
using web::TipoRetorno;

std::string Esperado(std::string_view nome) {
  const std::string caminho = std::string(QUORV_DADOS_WEB) + "/" + std::string(nome);
  const std::string bytes = LeBytes(caminho);
  EXPECT_FALSE(bytes.empty()) << caminho;
  return bytes;
}

std::string LinhaNota(long long numero, std::string_view tr, std::string_view nota) {
  return Registro(160).Numero(1, 8, numero).Campo(9, 2, tr).Campo(11, 20, nota).Texto();
}

std::string LinhaFicha(long long numero, std::string_view tr, std::string_view solicitacao) {
  return Registro(260).Numero(1, 8, numero).Campo(9, 3, tr).Campo(12, 10, solicitacao).Texto();
}

// The UTF-8 text padded with blanks to 100 characters, as the readers give it.
std::string Descricao(std::string_view texto) {
  std::size_t caracteres = 0;
  for (char c : texto) {
    if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) ++caracteres;
  }
  return std::string(texto) + std::string(100 - caracteres, ' ');
}

const std::string k27(27, ' ');
const std::string k36(36, ' ');
const std::string k37(37, ' ');

class Retorno : public ::testing::Test {
 protected:
  DiretorioTemporario diretorio;
  std::string advertencias = diretorio.Advertencias();
  std::string retorno = diretorio.Arquivo("RETORNO.TXT");
};

TEST_F(Retorno, DeFichasEscritasAMao) {
  const std::string tr110 = LinhaFicha(3, "110", "0000012345");
  GravaBytes(advertencias, Advertencias()
                               .Linha(61, LinhaFicha(2, "100", "0000012345"), "00000002")
                               .Linha(82, tr110, "00000003")
                               .Linha(47, tr110, "00000003")
                               .Linha(31, LinhaFicha(7, "140", "0000012345"), "00000007")
                               .Linha(999, LinhaFicha(5, "120", ""), "00000005")
                               .Linha(125, tr110, "00123456")
                               .Texto());
  EXPECT_TRUE(web::GravaRetorno(TipoRetorno::kFichas, advertencias, retorno, "000123"));
  EXPECT_EQ(LeBytes(retorno), Esperado("retorno_fichas.txt"));
  // Writing the return file leaves the warnings file to its caller.
  EXPECT_TRUE(diretorio.TemAdvertencias());
}

TEST_F(Retorno, DeNotasEscritasAMao) {
  const std::string nota = LinhaNota(3, "10", "00112345672001000042");
  GravaBytes(advertencias, Advertencias()
                               .Linha(37, nota, "00000003")
                               .Linha(167, nota, "00000003")
                               .Linha(31, nota, "00000003")
                               .Linha(85, LinhaNota(9, "99", ""), "00120000")
                               .Texto());
  EXPECT_TRUE(web::GravaRetorno(TipoRetorno::kNotas, advertencias, retorno, "000042"));
  EXPECT_EQ(LeBytes(retorno), Esperado("retorno_notas_advertencias.txt"));
}

TEST_F(Retorno, ArquivoDeAdvertenciasVazioDaUmaEntradaEmBranco) {
  GravaBytes(advertencias, "");
  EXPECT_TRUE(web::GravaRetorno(TipoRetorno::kNotas, advertencias, retorno, "7"));
  const std::string tracos(69, '-');
  EXPECT_EQ(LeBytes(retorno),
            "SECRETARIA DA FAZENDA - ESTADO DO VALDORIA\r\n"
            "Informamos abaixo o resultado da valida\xE7\xE3o do arquivo de Notas\r\n"
            "Fiscais de Produtor: 7\r\n"
            "Inconsistencias encontradas:\r\n" +
                tracos +
                "\r\n"
                "TR          NOTA              LINHA DESCRI\xC7\xC3O DA INCONSISTENCIA\r\n"
                "   --------------------------\r\n"
                "   Inscri\xE7\xE3o   T S\xE9rie N\xFAmero\r\n" +
                tracos + "\r\n" + "   " + k27 + "    0 " + std::string(100, ' ') + "\r\n");
}

TEST_F(Retorno, RetornoQueNaoPodeSerCriado) {
  GravaBytes(advertencias, Advertencias().Linha(5, LinhaFicha(2, "777", ""), "00000002").Texto());
  EXPECT_FALSE(web::GravaRetorno(TipoRetorno::kFichas, advertencias,
                                 diretorio.Arquivo("nao-ha/RETORNO.TXT"), "1"));
  EXPECT_FALSE(std::filesystem::exists(diretorio.Caminho() / "nao-ha"));
}

TEST_F(Retorno, RelataSemAdvertenciasRespondeTrueENadaEscreve) {
  EXPECT_TRUE(web::Relata(TipoRetorno::kNotas, diretorio.Texto(), "/RETORNO.TXT", "1"));
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::u8path(retorno)));
}

TEST_F(Retorno, RelataEscreveOREtornoEApagaAsAdvertencias) {
  GravaBytes(advertencias, Advertencias().Linha(5, LinhaFicha(2, "777", ""), "00000002").Texto());
  EXPECT_FALSE(web::Relata(TipoRetorno::kFichas, diretorio.Texto(), "/RETORNO.TXT", "1"));
  EXPECT_FALSE(diretorio.TemAdvertencias());
  EXPECT_NE(LeBytes(retorno).find("777                                2  TR inv\xE1lido"),
            std::string::npos);
}

TEST_F(Retorno, RelataIgnoraPastaComONomeDasAdvertencias) {
  std::filesystem::create_directory(std::filesystem::u8path(advertencias));
  EXPECT_TRUE(web::Relata(TipoRetorno::kNotas, diretorio.Texto(), "/RETORNO.TXT", "1"));
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::u8path(retorno)));
}

// Texts of 33, 34, 66 and 67 characters: whole, two pieces, two pieces (the third is never
// written below 67), three pieces.
constexpr std::string_view k33 = "Tipo de Nota de Produtor inválido";
constexpr std::string_view k34 = "Nota Fiscal de Produtor rejeitada.";
constexpr std::string_view k66 =
    "Valor ICMS ST deve ser menor ou igual a Base de Cálculo do ICMS ST";
constexpr std::string_view k67 =
    "Valor ICMS ST deve ser menor ou igual a Base de Cálculo do ICMS ST.";

TEST(LinhasDoAviso, TextosDe33_34_66E67CaracteresEmNotas) {
  const std::string inicio = "99 " + k27 + "   12 ";
  EXPECT_EQ(LinhasDoAviso(TipoRetorno::kNotas, "99", "", 12, Descricao(k33)),
            inicio + "Tipo de Nota de Produtor inv\xE1lido" + std::string(67, ' ') + "\r\n");
  EXPECT_EQ(LinhasDoAviso(TipoRetorno::kNotas, "99", "", 12, Descricao(k34)),
            inicio + "Nota Fiscal de Produtor\r\n" + k36 + "rejeitada.\r\n");
  EXPECT_EQ(LinhasDoAviso(TipoRetorno::kNotas, "99", "", 12, Descricao(k66)),
            inicio + "Valor ICMS ST deve ser menor ou\r\n" + k36 +
                "igual a Base de C\xE1lculo do ICMS\r\n");
  EXPECT_EQ(LinhasDoAviso(TipoRetorno::kNotas, "99", "", 12, Descricao(k67)),
            inicio + "Valor ICMS ST deve ser menor ou\r\n" + k36 +
                "igual a Base de C\xE1lculo do ICMS\r\n" + k36 + "ST.\r\n");
}

TEST(LinhasDoAviso, TextosDe33_34_66E67CaracteresEmFichas) {
  const std::string inicio = "140 " + k27 + "   12  ";
  EXPECT_EQ(LinhasDoAviso(TipoRetorno::kFichas, "140", "", 12, Descricao(k33)),
            inicio + "Tipo de Nota de Produtor inv\xE1lido" + std::string(67, ' ') + "\r\n");
  EXPECT_EQ(LinhasDoAviso(TipoRetorno::kFichas, "140", "", 12, Descricao(k34)),
            inicio + "Nota Fiscal de Produtor\r\n" + k37 + "rejeitada.\r\n");
  EXPECT_EQ(LinhasDoAviso(TipoRetorno::kFichas, "140", "", 12, Descricao(k66)),
            inicio + "Valor ICMS ST deve ser menor ou\r\n" + k37 +
                "igual a Base de C\xE1lculo do ICMS\r\n");
  EXPECT_EQ(LinhasDoAviso(TipoRetorno::kFichas, "140", "", 12, Descricao(k67)),
            inicio + "Valor ICMS ST deve ser menor ou\r\n" + k37 +
                "igual a Base de C\xE1lculo do ICMS\r\n" + k37 + "ST.\r\n");
}

TEST(LinhasDoAviso, NadaDepoisDoTerceiroPedaco) {
  const std::string longo =
      "um dois tres quatro cinco seis sete oito nove dez onze doze treze quatorze quinze "
      "dezesseis dezessete";
  EXPECT_EQ(LinhasDoAviso(TipoRetorno::kNotas, "01", "", 1, longo),
            "01 " + k27 + "    1 um dois tres quatro cinco seis\r\n" + k36 +
                "sete oito nove dez onze doze\r\n" + k36 + "treze quatorze quinze dezesseis\r\n");
}

TEST(LinhasDoAviso, IdentificacaoSoNoTipoExato) {
  const std::string nota = "12345678901ABC000123";
  EXPECT_EQ(LinhasDoAviso(TipoRetorno::kNotas, "10", nota, 3, "x"),
            "10 123/4567890 1 ABC   000123    3 x\r\n");
  // Another record, or the form's 110 in an invoice file, shows blanks instead.
  EXPECT_EQ(LinhasDoAviso(TipoRetorno::kNotas, "20", nota, 3, "x"), "20 " + k27 + "    3 x\r\n");
  EXPECT_EQ(LinhasDoAviso(TipoRetorno::kFichas, "110", "0000012345", 3, "x"),
            "110 0000012345" + std::string(17, ' ') + "    3  x\r\n");
  EXPECT_EQ(LinhasDoAviso(TipoRetorno::kFichas, "10 ", "0000012345", 3, "x"),
            "10  " + k27 + "    3  x\r\n");
}

TEST(LinhasDoAviso, MascarasDeixamBrancosAEsquerda) {
  EXPECT_EQ(LinhasDoAviso(TipoRetorno::kNotas, "10", "1234", -7, "x"),
            "10    /" + std::string(18, ' ') + "1234" + "   -7 x\r\n");
  EXPECT_EQ(LinhasDoAviso(TipoRetorno::kFichas, "110", "12", 99999, "x"),
            "110         12" + std::string(17, ' ') + "99999  x\r\n");
}

}  // namespace
}  // namespace quorv::teste
