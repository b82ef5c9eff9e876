// Registration-form files that are not what they should be: empty, binary, of wrong lengths and
// line ends, with bytes above 127, in places that cannot be used. The record type is converted
// before the length is tested, so a line whose type columns hold no number fails the run (9)
// whatever its length. Every case compares the status and the exact warnings file, and shows
// that the input file was only read.
#include <filesystem>
#include <string>
#include <vector>

#include "robustez.hpp"
#include "teste_fichas.hpp"

namespace quorv::teste {
namespace {

class EntradasFichas : public TesteFichas {
 protected:
  void TearDown() override { entradas.Confere(); }

  // Validates the bytes written as the input file, with the optional arguments given.
  int16_t ValidaBytes(std::string_view bytes, const std::string& servidor = "") {
    return validacao.Valida_Fichas(entradas.Grava(diretorio.Arquivo("remessa.txt"), bytes),
                                   numeroRemessa, diretorio.Texto(), 0, 0, "", servidor);
  }

  // The lines of the file built so far, each ended by the line end.
  std::string Bytes(std::string_view fim = "\r\n") const {
    return JuntaLinhas(arquivo.Linhas(), fim);
  }

  // A whole file without a problem: header, two requests, trailer.
  void ArquivoLimpo() {
    arquivo.Cabecalho();
    arquivo.SolicitacaoCompleta("0000000001");
    arquivo.SolicitacaoCompleta("0000000002");
    arquivo.Trailer();
  }

  // The run failed inside, without a warning for the line, and left no warnings file.
  void ConfereFalhaGrave(int16_t status) {
    EXPECT_EQ(status, 9);
    EXPECT_TRUE(validacao.bTem_Erro_Grave);
    EXPECT_FALSE(diretorio.TemAdvertencias());
  }

  // The record as the warning copies it: cut or padded with blanks to 260 bytes.
  static std::string Copiada(std::string_view linha) {
    std::string copia(linha.substr(0, kLarguraFichas));
    copia.resize(kLarguraFichas, ' ');
    return copia;
  }

  Entradas entradas;
};

TEST_F(EntradasFichas, ArquivoVazioNaoTemTrailer) {
  EXPECT_EQ(ValidaBytes(""), 8);
  // A new object has read no line: the warning carries an empty line and an empty number.
  EXPECT_EQ(Gravadas(), "7#0#0##\r\n");
  EXPECT_FALSE(validacao.bTem_Erro_Grave);
}

TEST_F(EntradasFichas, ArquivoDeUmByteNaoTemTipoDeRegistro) {
  // Columns 9-11 of a line of one byte are blanks: no record type, the run fails.
  for (const char* byte : {"A", "1", "\n", "\xE9"}) {
    DiretorioTemporario outro;
    Entradas umByte;
    const std::string caminho = umByte.Grava(outro.Arquivo("um-byte.txt"), byte);
    ValidacaoFichaCadastral v;
    std::string numero = "antes";
    EXPECT_EQ(v.Valida_Fichas(caminho, numero, outro.Texto()), 9);
    EXPECT_TRUE(v.bTem_Erro_Grave);
    EXPECT_FALSE(outro.TemAdvertencias());
    EXPECT_EQ(numero, "");
    umByte.Confere();
  }
}

TEST_F(EntradasFichas, ArquivoBinarioNaoTemTipoDeRegistro) {
  std::string binario;
  for (int i = 0; i < 1024; ++i)
    binario += static_cast<char>(i % 256);
  ConfereFalhaGrave(ValidaBytes(binario));
}

TEST_F(EntradasFichas, LinhaDeBytesNulosNaoTemTipoDeRegistro) {
  const std::string nulos(260, '\0');
  ConfereFalhaGrave(ValidaBytes(nulos + "\r\n" + nulos + "\r\n"));
}

TEST_F(EntradasFichas, BytesNulosDepoisDoTipo) {
  // Sequence and type are right; NUL bytes fill the rest of a request's opening, which the web
  // system's server name takes without its field checks.
  arquivo.Cabecalho();
  Registro& abertura = arquivo.Novo("100");
  abertura.Campo(12, 249, std::string(249, '\0'));
  EXPECT_EQ(ValidaBytes(Bytes(), "TARNWEB"), 8);
  EXPECT_EQ(Gravadas(), Esperado({{7, 2}}));
  EXPECT_EQ(validacao.sNro_Solicitacao, std::string(10, '\0'));
}

class TamanhoDeLinhaFichas : public EntradasFichas,
                             public ::testing::WithParamInterface<std::size_t> {};

TEST_P(TamanhoDeLinhaFichas, PrimeiraLinhaPara) {
  ArquivoLimpo();
  const std::string primeira = arquivo.Linha(0).ComLargura(GetParam());
  arquivo.Linha(0) = Registro(GetParam());
  arquivo.Linha(0).Campo(1, static_cast<int>(GetParam()), primeira);
  EXPECT_EQ(ValidaBytes(Bytes()), 8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(2, Copiada(primeira), "00000001").Texto());
}

TEST_P(TamanhoDeLinhaFichas, LinhaDoMeioPara) {
  ArquivoLimpo();
  const std::string meio = arquivo.Linha(4).ComLargura(GetParam());
  arquivo.Linha(4) = Registro(GetParam());
  arquivo.Linha(4).Campo(1, static_cast<int>(GetParam()), meio);
  EXPECT_EQ(ValidaBytes(Bytes()), 8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(2, Copiada(meio), "00000005").Texto());
}

INSTANTIATE_TEST_SUITE_P(EntradasFichas, TamanhoDeLinhaFichas,
                         ::testing::Values(259u, 261u, 100000u));

TEST_F(EntradasFichas, FimDeLinhaSoLFEAceito) {
  ArquivoLimpo();
  EXPECT_EQ(ValidaBytes(Bytes("\n")), 8);
  EXPECT_FALSE(diretorio.TemAdvertencias());
  EXPECT_FALSE(validacao.bTem_Erro_Grave);
  EXPECT_EQ(numeroRemessa, "000001");
}

TEST_F(EntradasFichas, FimDeLinhaSoCRFazUmaLinhaSo) {
  ArquivoLimpo();
  EXPECT_EQ(ValidaBytes(Bytes("\r")), 8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(2, arquivo.Linha(0).Texto(), "00000001").Texto());
}

TEST_F(EntradasFichas, FinsDeLinhaMisturadosSaoAceitos) {
  ArquivoLimpo();
  const std::vector<std::string> linhas = arquivo.Linhas();
  std::string bytes;
  for (std::size_t i = 0; i < linhas.size(); ++i) {
    // The last line has no end at all.
    bytes += linhas[i] + (i + 1 == linhas.size() ? "" : i % 2 == 0 ? "\r\n" : "\n");
  }
  EXPECT_EQ(ValidaBytes(bytes), 8);
  EXPECT_FALSE(diretorio.TemAdvertencias());
  EXPECT_FALSE(validacao.bTem_Erro_Grave);
}

TEST_F(EntradasFichas, LinhaVaziaDepoisDoTrailerNaoELida) {
  ArquivoLimpo();
  EXPECT_EQ(ValidaBytes(Bytes() + "\r\n"), 8);
  EXPECT_FALSE(diretorio.TemAdvertencias());
  EXPECT_FALSE(validacao.bTem_Erro_Grave);
}

TEST_F(EntradasFichas, LinhaVaziaNoFimSemTrailerFalha) {
  arquivo.Cabecalho();
  arquivo.SolicitacaoCompleta("0000000001");
  ConfereFalhaGrave(ValidaBytes(Bytes() + "\r\n"));
  EXPECT_EQ(numeroRemessa, "000001");
}

TEST_F(EntradasFichas, LinhaVaziaNoFimGuardaAsAdvertenciasJaGravadas) {
  arquivo.Cabecalho();
  arquivo.TR100();
  arquivo.TR100("0000000002");
  EXPECT_EQ(ValidaBytes(Bytes() + "\r\n"), 9);
  EXPECT_TRUE(validacao.bTem_Erro_Grave);
  EXPECT_EQ(Gravadas(), Esperado({{13, 3}}));
}

TEST_F(EntradasFichas, BytesAltosEmTodosOsCampos) {
  // The web system's server name takes the records without their field checks, so only the
  // structure rules speak; every column after the record type holds bytes above 127 and is
  // copied byte for byte.
  const std::string remessa(6, '\xE9');
  Registro& cabecalho = arquivo.Novo("001");
  cabecalho.Campo(12, 249, BytesAltos(249)).Campo(61, 6, remessa);
  arquivo.Novo("100").Campo(12, 249, BytesAltos(249, 3));
  Registro& segunda = arquivo.Novo("100");
  segunda.Campo(12, 249, BytesAltos(249, 5)).Campo(12, 10, std::string(10, '\xC7'));
  arquivo.Novo("999").Campo(12, 249, BytesAltos(249, 11));
  EXPECT_EQ(ValidaBytes(Bytes(), "TARNWEB"), 8);
  EXPECT_EQ(Gravadas(), Esperado({{13, 3}, {38, 4}}));
  // Texts given back to the host are UTF-8.
  EXPECT_EQ(numeroRemessa, "éééééé");
  EXPECT_EQ(validacao.sNumeroRemessaRef, "éééééé");
  EXPECT_EQ(validacao.sNro_Solicitacao, "ÇÇÇÇÇÇÇÇÇÇ");
  EXPECT_FALSE(validacao.bTem_Erro_Grave);
}

TEST_F(EntradasFichas, SequenciaComBytesAltosPara) {
  arquivo.Cabecalho();
  Registro& abertura = arquivo.TR100();
  abertura.Campo(1, 8, BytesAltos(8));
  arquivo.Trailer();
  EXPECT_EQ(ValidaBytes(Bytes()), 8);
  EXPECT_EQ(Gravadas(), Esperado({{3, 2}}));
}

TEST_F(EntradasFichas, TipoComBytesAltosFalha) {
  arquivo.Cabecalho();
  arquivo.TR100().Campo(9, 3, BytesAltos(3));
  arquivo.Trailer();
  ConfereFalhaGrave(ValidaBytes(Bytes()));
}

TEST_F(EntradasFichas, SequenciaComLetrasDepoisDosDigitosEAceita) {
  // The sequence is read by its leading digits.
  ArquivoLimpo();
  arquivo.Linha(0).Campo(1, 8, "0000001X");
  arquivo.Linha(1).Campo(1, 8, "00002ABC");
  EXPECT_EQ(ValidaBytes(Bytes()), 8);
  EXPECT_FALSE(diretorio.TemAdvertencias());
}

TEST_F(EntradasFichas, SequenciaComLetraNaFrentePara) {
  ArquivoLimpo();
  arquivo.Linha(2).Campo(1, 8, "X0000003");
  EXPECT_EQ(ValidaBytes(Bytes()), 8);
  EXPECT_EQ(Gravadas(), Esperado({{3, 3}}));
}

TEST_F(EntradasFichas, ArquivoQueEDiretorio) {
  GravaBytes(diretorio.Advertencias(), "antiga\r\n");
  const std::string pasta = diretorio.Arquivo("pasta.txt");
  std::filesystem::create_directory(std::filesystem::u8path(pasta));
  EXPECT_EQ(validacao.Valida_Fichas(pasta, numeroRemessa, diretorio.Texto()), 9);
  EXPECT_FALSE(validacao.bTem_Erro_Grave);
  EXPECT_FALSE(diretorio.TemAdvertencias());
  EXPECT_TRUE(std::filesystem::is_directory(std::filesystem::u8path(pasta)));
}

TEST_F(EntradasFichas, ArquivoInexistente) {
  GravaBytes(diretorio.Advertencias(), "antiga\r\n");
  EXPECT_EQ(validacao.Valida_Fichas(diretorio.Arquivo("nao-existe.txt"), numeroRemessa,
                                    diretorio.Texto()),
            9);
  EXPECT_FALSE(validacao.bTem_Erro_Grave);
  EXPECT_FALSE(diretorio.TemAdvertencias());
}

TEST_F(EntradasFichas, DiretorioDeTrabalhoInexistente) {
  ArquivoLimpo();
  const std::string caminho = entradas.Grava(diretorio.Arquivo("remessa.txt"), Bytes());
  const std::string inexistente = diretorio.Arquivo("nao-existe");
  numeroRemessa = "antes";
  EXPECT_EQ(validacao.Valida_Fichas(caminho, numeroRemessa, inexistente), 9);
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::u8path(inexistente)));
  EXPECT_EQ(numeroRemessa, "antes");
}

TEST_F(EntradasFichas, DiretorioDeTrabalhoQueEArquivo) {
  ArquivoLimpo();
  const std::string caminho = entradas.Grava(diretorio.Arquivo("remessa.txt"), Bytes());
  const std::string arquivoComum = entradas.Grava(diretorio.Arquivo("comum"), "conteúdo\r\n");
  EXPECT_EQ(validacao.Valida_Fichas(caminho, numeroRemessa, arquivoComum), 9);
  EXPECT_FALSE(diretorio.TemAdvertencias());
}

TEST_F(EntradasFichas, DiretorioDeTrabalhoSemPermissaoDeEscrita) {
  arquivo.Cabecalho();
  const std::string caminho = entradas.Grava(diretorio.Arquivo("remessa.txt"), Bytes());
  DiretorioTemporario trabalho;
  std::filesystem::permissions(
      trabalho.Caminho(), std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
  if (!EscritaRecusada(trabalho.Caminho())) {
    GTEST_SKIP() << "este processo escreve mesmo sem permissão (superusuário)";
  }
  EXPECT_EQ(validacao.Valida_Fichas(caminho, numeroRemessa, trabalho.Texto()), 9);
  EXPECT_FALSE(validacao.bTem_Erro_Grave);
  EXPECT_FALSE(trabalho.TemAdvertencias());
}

TEST_F(EntradasFichas, AdvertenciasAntigasMaioresSaoSubstituidas) {
  GravaBytes(diretorio.Advertencias(), std::string(10000, 'x'));
  arquivo.Cabecalho();
  arquivo.TR100();
  EXPECT_EQ(ValidaBytes(Bytes()), 8);
  EXPECT_EQ(Gravadas(), Esperado({{7, 2}}));
}

TEST_F(EntradasFichas, AdvertenciasAntigasApagadasDepoisDeExecucaoLimpa) {
  GravaBytes(diretorio.Advertencias(), "7#0#0#antiga#00000001\r\n");
  ArquivoLimpo();
  EXPECT_EQ(ValidaBytes(Bytes()), 8);
  EXPECT_FALSE(diretorio.TemAdvertencias());
}

TEST_F(EntradasFichas, SeparadorDeVariosCaracteres) {
  const std::vector<std::pair<std::string, std::string>> separadores = {
      {"<=>", "<=>"}, {"", ""}, {"##", "##"}, {"§", "\xA7"}, {" ; ", " ; "}};
  arquivo.Cabecalho();
  Registro& abertura = arquivo.TR100();
  abertura.Campo(200, 1, "#");
  const std::string comBranco = Registro(abertura).Campo(200, 1, " ").Texto();
  const std::string caminho = entradas.Grava(diretorio.Arquivo("remessa.txt"), Bytes());
  for (const auto& [separador, gravado] : separadores) {
    EXPECT_EQ(
        validacao.Valida_Fichas(caminho, numeroRemessa, diretorio.Texto(), 0, 0, "", "", separador),
        8);
    EXPECT_EQ(Gravadas(), Advertencias(gravado).Linha(129, comBranco, "00000002").Texto())
        << separador;
  }
}

TEST_F(EntradasFichas, ChavesComParteFracionaria) {
  struct Caso {
    double remessa;
    double processamento;
    const char* textoRemessa;
    const char* textoProcessamento;
  };
  const std::vector<Caso> casos = {{12.5, 0.25, "12,5", "0,25"},
                                   {-7.125, 1234567.5, "-7,125", "1234567,5"},
                                   {0.1, 3, "0,1", "3"}};
  arquivo.Cabecalho();
  const Registro& abertura = arquivo.TR100();
  const std::string caminho = entradas.Grava(diretorio.Arquivo("remessa.txt"), Bytes());
  for (const Caso& caso : casos) {
    EXPECT_EQ(validacao.Valida_Fichas(caminho, numeroRemessa, diretorio.Texto(), caso.remessa,
                                      caso.processamento),
              8);
    EXPECT_EQ(Gravadas(), Advertencias("#", caso.textoRemessa, caso.textoProcessamento)
                              .Linha(7, abertura.Texto(), "00000002")
                              .Texto());
  }
}

TEST_F(EntradasFichas, CaminhosComBrancosEAcentos) {
  const std::string trabalho = diretorio.Arquivo("trabalho com ação e pão");
  std::filesystem::create_directory(std::filesystem::u8path(trabalho));
  arquivo.Cabecalho();
  const Registro& abertura = arquivo.TR100();
  const std::string caminho = entradas.Grava(diretorio.Arquivo("remessa de número ç.txt"), Bytes());
  EXPECT_EQ(validacao.Valida_Fichas(caminho, numeroRemessa, trabalho), 8);
  EXPECT_EQ(LeBytes(trabalho + "/ADVERTENCIAS.TXT"),
            Advertencias().Linha(7, abertura.Texto(), "00000002").Texto());
  EXPECT_EQ(numeroRemessa, "000001");
}

}  // namespace
}  // namespace quorv::teste
