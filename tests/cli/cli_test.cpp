// The installed quorvvalida program, run as a user runs it: exit codes, what it prints, the
// files it leaves in the working directory, its JSON read back.
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "arquivos.hpp"

namespace quorv::teste {
namespace {

struct Execucao {
  int codigo = -1;
  std::string saida;
  std::string erros;
};

std::string Aspas(const std::string& argumento) {
  std::string resultado = "'";
  for (char c : argumento) {
    if (c == '\'') {
      resultado += "'\\''";
    } else {
      resultado += c;
    }
  }
  return resultado + "'";
}

std::string Amostra(const std::string& nome) {
  return std::string(QUORV_AMOSTRAS) + "/" + nome;
}

class Programa : public ::testing::Test {
 protected:
  // Runs the installed program with the arguments, stdout and stderr kept apart.
  Execucao Executa(const std::vector<std::string>& argumentos, const std::string& ambiente = "") {
    std::string comando = ambiente + " " + Aspas(QUORV_PROGRAMA);
    for (const std::string& argumento : argumentos)
      comando += " " + Aspas(argumento);
    const std::string saida = diretorio.Arquivo("saida.txt");
    const std::string erros = diretorio.Arquivo("erros.txt");
    comando += " > " + Aspas(saida) + " 2> " + Aspas(erros) + " < /dev/null";
    const int estado = std::system(comando.c_str());
    Execucao execucao;
    execucao.codigo = WIFEXITED(estado) ? WEXITSTATUS(estado) : -1;
    execucao.saida = LeBytes(saida);
    execucao.erros = LeBytes(erros);
    return execucao;
  }

  // Runs the program with stderr on a terminal of its own (stdout still goes to a file), as a
  // person at a terminal runs it; what the terminal showed comes back as the errors.
  Execucao ExecutaNumTerminal(const std::vector<std::string>& argumentos) {
    const int mestre = posix_openpt(O_RDWR | O_NOCTTY);
    if (mestre < 0 || grantpt(mestre) != 0 || unlockpt(mestre) != 0) return {};
    const int terminal = open(ptsname(mestre), O_RDWR | O_NOCTTY);
    const std::string saida = diretorio.Arquivo("saida.txt");
    std::vector<std::string> palavras{QUORV_PROGRAMA};
    palavras.insert(palavras.end(), argumentos.begin(), argumentos.end());
    std::vector<char*> argv;
    for (std::string& palavra : palavras)
      argv.push_back(palavra.data());
    argv.push_back(nullptr);
    const pid_t filho = fork();
    if (filho == 0) {
      const int arquivo = open(saida.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
      const int nulo = open("/dev/null", O_RDONLY);
      dup2(nulo, 0);
      dup2(arquivo, 1);
      dup2(terminal, 2);
      close(mestre);
      close(terminal);
      execv(argv[0], argv.data());
      _exit(127);
    }
    close(terminal);
    Execucao execucao;
    char bloco[4096];
    for (;;) {
      const ssize_t lidos = read(mestre, bloco, sizeof bloco);
      if (lidos > 0) {
        execucao.erros.append(bloco, static_cast<std::size_t>(lidos));
      } else if (lidos < 0 && errno == EINTR) {
        continue;
      } else {
        break;  // the program closed the terminal
      }
    }
    int estado = 0;
    waitpid(filho, &estado, 0);
    close(mestre);
    execucao.codigo = WIFEXITED(estado) ? WEXITSTATUS(estado) : -1;
    execucao.saida = LeBytes(saida);
    return execucao;
  }

  // The working directory of the runs, apart from the program's own output files.
  std::string Trabalho() {
    const std::string caminho = diretorio.Arquivo("trabalho");
    std::filesystem::create_directories(std::filesystem::u8path(caminho));
    return caminho;
  }

  bool TemAdvertencias() {
    return std::filesystem::exists(std::filesystem::u8path(Trabalho() + "/ADVERTENCIAS.TXT"));
  }

  DiretorioTemporario diretorio;
  const std::string inscricao = "--inscricao-lib=" + std::string(QUORV_INSCRICAO_EXEMPLO);
};

TEST_F(Programa, NotasLimpasSaemComZeroSemArquivoDeAdvertencias) {
  const Execucao execucao =
      Executa({"notas", Amostra("notas-limpo.txt"), "-d", Trabalho(), inscricao});
  EXPECT_EQ(execucao.codigo, 0) << execucao.erros;
  EXPECT_FALSE(TemAdvertencias());
  EXPECT_NE(execucao.saida.find("Status:             0"), std::string::npos) << execucao.saida;
  EXPECT_NE(execucao.saida.find("Advertências:       nenhuma"), std::string::npos);
  EXPECT_EQ(execucao.erros, "");
}

TEST_F(Programa, NotasComDefeitosSaemComUmEJsonComCadaAdvertencia) {
  const Execucao execucao =
      Executa({"notas", Amostra("notas-com-defeitos.txt"), "-d", Trabalho(), inscricao, "--json"});
  EXPECT_EQ(execucao.codigo, 1) << execucao.erros;
  ASSERT_TRUE(TemAdvertencias());
  const auto documento = nlohmann::json::parse(execucao.saida);
  EXPECT_EQ(documento["status"], 1);
  EXPECT_EQ(documento["tipo"], "notas");
  EXPECT_EQ(documento["numero_remessa"], "000001");
  const auto& advertencias = documento["advertencias"];
  ASSERT_FALSE(advertencias.empty());
  // One entry per line of the warnings file, in its order.
  const std::string arquivo = LeBytes(Trabalho() + "/ADVERTENCIAS.TXT");
  std::size_t linhas = 0;
  for (char c : arquivo)
    linhas += c == '\n';
  EXPECT_EQ(advertencias.size(), linhas);
  EXPECT_EQ(documento["total_advertencias"], linhas);
  const std::string primeira = arquivo.substr(0, arquivo.find('\r'));
  EXPECT_EQ(std::to_string(advertencias[0]["codigo"].get<int>()),
            primeira.substr(0, primeira.find('#')));
  EXPECT_EQ(advertencias[0]["linha"].get<long long>(),
            std::stoll(primeira.substr(primeira.rfind('#') + 1)));
  for (const auto& advertencia : advertencias) {
    EXPECT_TRUE(advertencia["mensagem"].is_string());
    EXPECT_NE(advertencia["mensagem"], "");
  }
}

TEST_F(Programa, TipoIdentificadoPelaPrimeiraLinha) {
  const Execucao notas =
      Executa({Amostra("notas-limpo.txt"), "-d", Trabalho(), inscricao, "--json"});
  EXPECT_EQ(nlohmann::json::parse(notas.saida)["tipo"], "notas");
  const Execucao fichas = Executa({Amostra("fichas-limpo.txt"), "-d", Trabalho(), "--json"});
  const auto documento = nlohmann::json::parse(fichas.saida);
  EXPECT_EQ(documento["tipo"], "fichas");
  // A form run always ends at its trailer with 8; a clean one leaves no warnings file.
  EXPECT_EQ(documento["status"], 8);
  EXPECT_EQ(fichas.codigo, 0);
  EXPECT_FALSE(TemAdvertencias());
}

TEST_F(Programa, FichasComDefeitosSaemComUm) {
  const Execucao execucao =
      Executa({"fichas", Amostra("fichas-com-defeitos.txt"), "-d", Trabalho()});
  EXPECT_EQ(execucao.codigo, 1);
  EXPECT_TRUE(TemAdvertencias());
  EXPECT_NE(execucao.saida.find("Solicitação Rejeitada"), std::string::npos) << execucao.saida;
}

TEST_F(Programa, ArquivoDeTipoDesconhecido) {
  const std::string arquivo = diretorio.Arquivo("estranho.txt");
  GravaBytes(arquivo, "linha curta\r\n");
  const Execucao execucao = Executa({arquivo, "-d", Trabalho()});
  EXPECT_EQ(execucao.codigo, 2);
  EXPECT_NE(execucao.erros.find("não foi possível identificar o tipo"), std::string::npos);
  EXPECT_NE(execucao.erros.find("11 caracteres"), std::string::npos);
  EXPECT_EQ(execucao.saida, "");
}

TEST_F(Programa, ArquivoInexistenteNaoEValidado) {
  const Execucao execucao =
      Executa({"notas", diretorio.Arquivo("nao-existe.txt"), "-d", Trabalho(), "--json"});
  EXPECT_EQ(execucao.codigo, 2);
  const auto documento = nlohmann::json::parse(execucao.saida);
  EXPECT_EQ(documento["status"], 9);
  EXPECT_NE(documento["motivo"].get<std::string>().find("arquivo não encontrado"),
            std::string::npos);
  EXPECT_FALSE(TemAdvertencias());
}

TEST_F(Programa, DiretorioInexistenteNaoEValidado) {
  const Execucao execucao =
      Executa({"notas", Amostra("notas-limpo.txt"), "-d", diretorio.Arquivo("nao/existe")});
  EXPECT_EQ(execucao.codigo, 2);
  EXPECT_NE(execucao.saida.find("diretório de trabalho não encontrado"), std::string::npos);
}

TEST_F(Programa, ErroDeUsoMostraOUso) {
  for (const std::vector<std::string>& argumentos :
       std::vector<std::vector<std::string>>{{"--opcao-que-nao-existe"},
                                             {},
                                             {"web", Amostra("notas-limpo.txt")},
                                             {"mensagem", "outros", "1"},
                                             {"notas", "a.txt", "--chave-remessa", "abc"},
                                             {"notas", "a.txt", "--separador", ""}}) {
    const Execucao execucao = Executa(argumentos);
    EXPECT_EQ(execucao.codigo, 2) << execucao.erros;
    EXPECT_NE(execucao.erros.find("Uso: quorvvalida"), std::string::npos) << execucao.erros;
    EXPECT_EQ(execucao.saida, "");
  }
}

// An argument left over, or an option of another command, is a usage error, and nothing is
// validated.
TEST_F(Programa, ArgumentoSobrandoOuOpcaoDeOutroComando) {
  for (const std::vector<std::string>& argumentos : std::vector<std::vector<std::string>>{
           {"notas", Amostra("notas-limpo.txt"), "sobra.txt", "-d", Trabalho()},
           {"fichas", Amostra("fichas-limpo.txt"), "-d", Trabalho(), "--json", "sobra"},
           {Amostra("notas-limpo.txt"), "notas", Amostra("notas-limpo.txt"), "-d", Trabalho()},
           {"web", Amostra("notas-com-defeitos.txt"), "-r", "R.TXT", "-d", Trabalho(), "--origem",
            "SISTEMA"},
           {"mensagem", "notas", "77", "78"},
           {"mensagem", "notas", "77", "-d", Trabalho()},
           {"advertencias", "fichas", Amostra("fichas-com-defeitos.txt"), "--separador", ";"}}) {
    const Execucao execucao = Executa(argumentos);
    EXPECT_EQ(execucao.codigo, 2) << argumentos[0] << " " << argumentos[1];
    EXPECT_NE(execucao.erros.find("Uso: quorvvalida"), std::string::npos) << execucao.erros;
    EXPECT_EQ(execucao.saida, "") << argumentos[0] << " " << argumentos[1];
    EXPECT_FALSE(TemAdvertencias());
    EXPECT_FALSE(std::filesystem::exists(std::filesystem::u8path(Trabalho() + "/R.TXT")));
  }
}

TEST_F(Programa, AjudaEVersao) {
  const Execucao ajuda = Executa({"--help"});
  EXPECT_EQ(ajuda.codigo, 0);
  EXPECT_NE(ajuda.saida.find("Comandos:"), std::string::npos);
  const Execucao ajudaWeb = Executa({"web", "--help"});
  EXPECT_EQ(ajudaWeb.codigo, 0);
  EXPECT_NE(ajudaWeb.saida.find("--programa-chamador"), std::string::npos);
  const Execucao versao = Executa({"--version"});
  EXPECT_EQ(versao.codigo, 0);
  EXPECT_EQ(versao.saida, "quorvvalida 1.1.0.1\n");
}

TEST_F(Programa, QuietoNaoImprimeNada) {
  const Execucao execucao =
      Executa({"-q", Amostra("notas-com-defeitos.txt"), "-d", Trabalho(), inscricao});
  EXPECT_EQ(execucao.codigo, 1);
  EXPECT_EQ(execucao.saida, "");
  EXPECT_EQ(execucao.erros, "");
}

TEST_F(Programa, OpcoesChegamAoValidador) {
  const Execucao execucao = Executa({"notas", Amostra("notas-com-defeitos.txt"), "-d", Trabalho(),
                                     inscricao, "--chave-remessa", "123", "--chave-processamento",
                                     "7", "--separador", ";", "--json"});
  EXPECT_EQ(execucao.codigo, 1);
  const std::string arquivo = LeBytes(Trabalho() + "/ADVERTENCIAS.TXT");
  const std::string primeira = arquivo.substr(0, arquivo.find('\r'));
  const std::string codigo = primeira.substr(0, primeira.find(';'));
  EXPECT_EQ(primeira.substr(codigo.size(), 7), ";123;7;");
  const auto documento = nlohmann::json::parse(execucao.saida);
  EXPECT_EQ(std::to_string(documento["advertencias"][0]["codigo"].get<int>()), codigo);
}

TEST_F(Programa, OrigemA0SoConta) {
  const Execucao execucao = Executa(
      {"notas", Amostra("notas-com-defeitos.txt"), "-d", Trabalho(), "--origem", "A0", "--json"});
  EXPECT_EQ(execucao.codigo, 0) << execucao.saida;
  EXPECT_EQ(nlohmann::json::parse(execucao.saida)["status"], 0);
}

TEST_F(Programa, SemBibliotecaDeInscricaoUmAviso) {
  const Execucao execucao =
      Executa({"notas", Amostra("notas-limpo.txt"), "-d", Trabalho()}, "LD_LIBRARY_PATH=");
  EXPECT_EQ(execucao.codigo, 1);
  EXPECT_NE(execucao.erros.find("toda inscrição estadual de QZ será recusada"), std::string::npos);
  EXPECT_NE(execucao.erros.find("--inscricao-lib"), std::string::npos);
  EXPECT_EQ(execucao.erros.find("aviso", execucao.erros.find("aviso") + 1), std::string::npos);
}

TEST_F(Programa, BibliotecaDeInscricaoInexistente) {
  const Execucao execucao = Executa({"notas", Amostra("notas-limpo.txt"), "-d", Trabalho(),
                                     "--inscricao-lib", diretorio.Arquivo("nao-existe.so")});
  EXPECT_EQ(execucao.codigo, 2);
  EXPECT_NE(execucao.erros.find("não foi possível carregar"), std::string::npos);
}

TEST_F(Programa, WebEscreveORetornoNoDiretorio) {
  const Execucao comDefeitos =
      Executa({"web", Amostra("notas-com-defeitos.txt"), "-r", "RETORNO.TXT", "-d", Trabalho(),
               "--programa-chamador", "SISTEMA", inscricao});
  EXPECT_EQ(comDefeitos.codigo, 1) << comDefeitos.erros;
  const std::string retorno = LeBytes(Trabalho() + "/RETORNO.TXT");
  EXPECT_EQ(retorno.rfind("SECRETARIA DA FAZENDA - ESTADO DO VALDORIA\r\n", 0), 0u);
  EXPECT_FALSE(TemAdvertencias());

  const Execucao limpo =
      Executa({"web", Amostra("fichas-limpo.txt"), "-r", "OUTRO.TXT", "-d", Trabalho(), "--json"});
  EXPECT_EQ(limpo.codigo, 0);
  const auto documento = nlohmann::json::parse(limpo.saida);
  EXPECT_EQ(documento["resultado"], true);
  EXPECT_EQ(documento["arquivo_retorno"], nullptr);
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::u8path(Trabalho() + "/OUTRO.TXT")));
}

// What the facade cannot be given is told before it runs: a missing file or directory, or a
// file whose kind its first line does not tell.
TEST_F(Programa, WebSemArquivoDiretorioOuTipoSaiComDois) {
  const std::string estranho = diretorio.Arquivo("estranho.txt");
  GravaBytes(estranho, "linha curta\r\n");
  const Execucao semArquivo =
      Executa({"web", diretorio.Arquivo("nao-existe.txt"), "-r", "R.TXT", "-d", Trabalho()});
  EXPECT_EQ(semArquivo.codigo, 2);
  EXPECT_NE(semArquivo.erros.find("arquivo não encontrado"), std::string::npos);
  const Execucao semDiretorio = Executa(
      {"web", Amostra("notas-com-defeitos.txt"), "-r", "R.TXT", "-d", diretorio.Arquivo("nao/ha")});
  EXPECT_EQ(semDiretorio.codigo, 2);
  EXPECT_NE(semDiretorio.erros.find("diretório de trabalho não encontrado"), std::string::npos);
  const Execucao semTipo = Executa({"web", estranho, "-r", "R.TXT", "-d", Trabalho()});
  EXPECT_EQ(semTipo.codigo, 2);
  EXPECT_NE(semTipo.erros.find("informe --tipo P ou --tipo F"), std::string::npos);
  for (const Execucao& execucao : {semArquivo, semDiretorio, semTipo})
    EXPECT_EQ(execucao.saida, "");
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::u8path(Trabalho() + "/R.TXT")));
}

// The directory may come before the command, as for the other commands.
TEST_F(Programa, WebComDiretorioAntesDoComando) {
  const std::string atual = diretorio.Arquivo("atual");
  std::filesystem::create_directories(std::filesystem::u8path(atual));
  const Execucao execucao = Executa({"-d", Trabalho(), "web", Amostra("notas-com-defeitos.txt"),
                                     "-r", "R.TXT", "--programa-chamador", "SISTEMA", inscricao},
                                    "cd " + Aspas(atual) + " &&");
  EXPECT_EQ(execucao.codigo, 1) << execucao.erros;
  EXPECT_TRUE(std::filesystem::exists(std::filesystem::u8path(Trabalho() + "/R.TXT")));
  EXPECT_TRUE(std::filesystem::is_empty(std::filesystem::u8path(atual)));
}

// The facade glues the directory and the name; the tool puts a "/" between them and reports
// the file that was written, whatever the name looks like.
TEST_F(Programa, WebRelataOArquivoDeRetornoEscrito) {
  const Execucao execucao =
      Executa({"web", Amostra("notas-com-defeitos.txt"), "-r", "/R.TXT", "-d", Trabalho(),
               "--programa-chamador", "SISTEMA", inscricao, "--json"});
  EXPECT_EQ(execucao.codigo, 1) << execucao.erros;
  const auto documento = nlohmann::json::parse(execucao.saida);
  EXPECT_EQ(documento["resultado"], false);
  ASSERT_TRUE(documento["arquivo_retorno"].is_string()) << execucao.saida;
  const std::string retorno = documento["arquivo_retorno"];
  EXPECT_EQ(std::filesystem::u8path(retorno), std::filesystem::u8path(Trabalho() + "/R.TXT"));
  EXPECT_EQ(LeBytes(retorno).rfind("SECRETARIA DA FAZENDA - ESTADO DO VALDORIA\r\n", 0), 0u);
}

// On a terminal the bar is drawn while the file is read and wiped at the end; the summary on
// stdout is the same as ever.
TEST_F(Programa, BarraDeProgressoSoNumTerminal) {
  const Execucao terminal =
      ExecutaNumTerminal({"notas", Amostra("notas-limpo.txt"), "-d", Trabalho(), inscricao});
  EXPECT_EQ(terminal.codigo, 0) << terminal.erros;
  EXPECT_NE(terminal.erros.find("linhas/s"), std::string::npos) << terminal.erros;
  EXPECT_NE(terminal.erros.find("%"), std::string::npos) << terminal.erros;
  EXPECT_NE(terminal.erros.find("\r" + std::string(80, ' ') + "\r"), std::string::npos);
  EXPECT_NE(terminal.saida.find("Status:             0"), std::string::npos) << terminal.saida;
  EXPECT_EQ(terminal.saida.find("linhas/s"), std::string::npos);

  const Execucao quieto =
      ExecutaNumTerminal({"notas", Amostra("notas-limpo.txt"), "-d", Trabalho(), inscricao, "-q"});
  EXPECT_EQ(quieto.codigo, 0);
  EXPECT_EQ(quieto.erros, "");

  const Execucao arquivo =
      Executa({"notas", Amostra("notas-limpo.txt"), "-d", Trabalho(), inscricao});
  EXPECT_EQ(arquivo.codigo, 0);
  EXPECT_EQ(arquivo.erros, "");
}

TEST_F(Programa, WebComTipoComoDigitado) {
  const Execucao minusculo = Executa(
      {"web", Amostra("notas-com-defeitos.txt"), "-r", "R.TXT", "-d", Trabalho(), "--tipo", "p"});
  // The facade knows "P" and "F" only: "p" validates nothing and answers false.
  EXPECT_EQ(minusculo.codigo, 1);
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::u8path(Trabalho() + "/R.TXT")));
  const Execucao fichas = Executa({"web", Amostra("fichas-com-defeitos.txt"), "-r", "R.TXT", "-d",
                                   Trabalho(), "--tipo", "F", "--programa-chamador", "X"});
  EXPECT_EQ(fichas.codigo, 1);
  EXPECT_TRUE(std::filesystem::exists(std::filesystem::u8path(Trabalho() + "/R.TXT")));
}

TEST_F(Programa, MensagemDoCatalogo) {
  const Execucao notas = Executa({"mensagem", "notas", "77"});
  EXPECT_EQ(notas.codigo, 0);
  EXPECT_EQ(notas.saida, "Linha com tamanho Incorreto\n");
  const Execucao fichas = Executa({"mensagem", "fichas", "92"});
  EXPECT_EQ(fichas.saida, "Código do CNAE Fiscal inválido \n");
  const Execucao invalido = Executa({"mensagem", "notas", "sete"});
  EXPECT_EQ(invalido.codigo, 2);
}

TEST_F(Programa, AdvertenciasListadasPeloLeitor) {
  Executa({"fichas", Amostra("fichas-com-defeitos.txt"), "-d", Trabalho()});
  const Execucao lista =
      Executa({"advertencias", "fichas", Trabalho() + "/ADVERTENCIAS.TXT", "--json"});
  EXPECT_EQ(lista.codigo, 0) << lista.erros;
  const auto documento = nlohmann::json::parse(lista.saida);
  ASSERT_GT(documento["total"].get<int>(), 0);
  EXPECT_EQ(documento["advertencias"].size(), documento["total"].get<std::size_t>());
  EXPECT_EQ(documento["advertencias"][0]["descricao"], "Número da solicitação inválida");
  const Execucao ausente = Executa({"advertencias", "notas", diretorio.Arquivo("nada.txt")});
  EXPECT_EQ(ausente.codigo, 2);
}

TEST_F(Programa, CaminhoComBrancosEAcentos) {
  const std::string pasta = diretorio.Arquivo("remessas de março");
  std::filesystem::create_directories(std::filesystem::u8path(pasta));
  const std::string arquivo = pasta + "/notas com defeitos.txt";
  GravaBytes(arquivo, LeBytes(Amostra("notas-com-defeitos.txt")));
  const Execucao execucao = Executa({arquivo, "-d", pasta, inscricao, "-q"});
  EXPECT_EQ(execucao.codigo, 1);
  EXPECT_TRUE(std::filesystem::exists(std::filesystem::u8path(pasta + "/ADVERTENCIAS.TXT")));
}

}  // namespace
}  // namespace quorv::teste
