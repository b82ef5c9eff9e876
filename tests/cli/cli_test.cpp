// The installed quorvvalida program, run as a user runs it: exit codes, what it prints on stdout
// and stderr, the files it leaves in the working directory, and every JSON object it prints
// checked against the JSON Schemas installed with it.
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "arquivos.hpp"

namespace quorv::teste {
namespace {

namespace fs = std::filesystem;

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

const std::string kEsquemas = std::string(QUORV_PREFIXO) + "/share/quorvvalida/esquemas";

class Programa : public ::testing::Test {
 protected:
  // Runs a command line through the shell, stdout and stderr kept apart; stdin from `entrada`
  // (a file) or from nothing.
  Execucao Shell(const std::string& linha, const std::string& entrada = "/dev/null") {
    const std::string saida = diretorio.Arquivo("saida.txt");
    const std::string erros = diretorio.Arquivo("erros.txt");
    const std::string comando =
        linha + " > " + Aspas(saida) + " 2> " + Aspas(erros) + " < " + Aspas(entrada);
    const int estado = std::system(comando.c_str());
    Execucao execucao;
    execucao.codigo = WIFEXITED(estado) ? WEXITSTATUS(estado) : -1;
    execucao.saida = LeBytes(saida);
    execucao.erros = LeBytes(erros);
    return execucao;
  }

  // Runs the installed program with the arguments.
  Execucao Executa(const std::vector<std::string>& argumentos, const std::string& ambiente = "",
                   const std::string& entrada = "/dev/null") {
    std::string comando = ambiente + " " + Aspas(QUORV_PROGRAMA);
    for (const std::string& argumento : argumentos)
      comando += " " + Aspas(argumento);
    return Shell(comando, entrada);
  }

  // The JSON Lines that a run printed, each checked against the installed schema of its kind.
  std::vector<nlohmann::json> Json(const Execucao& execucao) {
    const std::string arquivo = diretorio.Arquivo("json.txt");
    GravaBytes(arquivo, execucao.saida);
    const Execucao validacao =
        Shell("python3 " + Aspas(QUORV_VALIDA_JSON) + " " + Aspas(kEsquemas), arquivo);
    EXPECT_EQ(validacao.codigo, 0) << validacao.erros << execucao.saida.substr(0, 2000);
    std::vector<nlohmann::json> objetos;
    std::size_t inicio = 0;
    while (inicio < execucao.saida.size()) {
      const std::size_t fim = execucao.saida.find('\n', inicio);
      objetos.push_back(nlohmann::json::parse(execucao.saida.substr(inicio, fim - inicio)));
      inicio = fim == std::string::npos ? execucao.saida.size() : fim + 1;
    }
    return objetos;
  }

  // The one JSON object a run printed.
  nlohmann::json Objeto(const Execucao& execucao) {
    const std::vector<nlohmann::json> objetos = Json(execucao);
    EXPECT_EQ(objetos.size(), 1u) << execucao.saida;
    return objetos.empty() ? nlohmann::json() : objetos.front();
  }

  // Runs the program with stderr on a terminal of `colunas` columns (stdout still goes to a
  // file, stdin from `entrada`, which may be a pipe the test writes); what the terminal showed
  // comes back as the errors. `durante` runs while the program runs, with the terminal's master.
  Execucao ExecutaNumTerminal(
      const std::vector<std::string>& argumentos, int colunas = 80, int entrada = -1,
      const std::function<void(int mestre, std::string& lido)>& durante = nullptr) {
    const int mestre = posix_openpt(O_RDWR | O_NOCTTY);
    if (mestre < 0 || grantpt(mestre) != 0 || unlockpt(mestre) != 0) return {};
    winsize tamanho{};
    tamanho.ws_row = 24;
    tamanho.ws_col = static_cast<unsigned short>(colunas);
    ioctl(mestre, TIOCSWINSZ, &tamanho);
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
      const int nulo = entrada >= 0 ? entrada : open("/dev/null", O_RDONLY);
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
    if (durante) durante(mestre, execucao.erros);
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
    fs::create_directories(fs::u8path(caminho));
    return caminho;
  }

  std::string Advertencias() { return Trabalho() + "/ADVERTENCIAS.TXT"; }
  bool TemAdvertencias() { return fs::exists(fs::u8path(Advertencias())); }

  // A file of the generator, of the kind and lines asked for.
  std::string Gerado(const std::string& tipo, int linhas, bool defeitos) {
    const std::string arquivo =
        diretorio.Arquivo(tipo + "-" + std::to_string(linhas) + (defeitos ? "-d" : "") + ".txt");
    std::string comando = Aspas(QUORV_GERADOR) + " " + tipo + " -n " + std::to_string(linhas) +
                          (defeitos ? " --defeitos" : "") + " -o " + Aspas(arquivo);
    EXPECT_EQ(std::system(comando.c_str()), 0);
    return arquivo;
  }

  DiretorioTemporario diretorio;
  const std::string inscricao = "--inscricao-lib=" + std::string(QUORV_INSCRICAO_EXEMPLO);
};

// Lines of a text.
std::size_t Linhas(const std::string& texto) {
  std::size_t linhas = 0;
  for (char c : texto)
    linhas += c == '\n';
  return linhas;
}

TEST_F(Programa, NotasLimpasSaemComZeroEUmResumo) {
  const std::string arquivo = Amostra("notas-limpo.txt");
  const Execucao execucao = Executa({"notas", arquivo, "-d", Trabalho(), inscricao});
  EXPECT_EQ(execucao.codigo, 0) << execucao.erros;
  EXPECT_FALSE(TemAdvertencias());
  EXPECT_EQ(execucao.saida,
            "Resultado:          aceito, sem advertências\n"
            "Arquivo:            " +
                arquivo +
                "\n"
                "Tipo:               notas fiscais de produtor\n"
                "Número da remessa:  000001\n"
                "Status:             0 (arquivo lido até o trailer, sem advertências)\n"
                "Advertências:       nenhuma\n");
  EXPECT_EQ(execucao.erros, "");
}

TEST_F(Programa, JsonDaValidacaoTemCadaAdvertenciaDoArquivo) {
  const Execucao execucao =
      Executa({"notas", Amostra("notas-com-defeitos.txt"), "-d", Trabalho(), inscricao, "--json"});
  EXPECT_EQ(execucao.codigo, 1) << execucao.erros;
  EXPECT_EQ(execucao.erros, "");
  ASSERT_TRUE(TemAdvertencias());
  const nlohmann::json objeto = Objeto(execucao);
  EXPECT_EQ(objeto["formato"], 1);
  EXPECT_EQ(objeto["objeto"], "validacao");
  EXPECT_EQ(objeto["status"], 1);
  EXPECT_EQ(objeto["aceito"], false);
  EXPECT_EQ(objeto["codigo_saida"], 1);
  EXPECT_EQ(objeto["numero_remessa"], "000001");
  EXPECT_EQ(objeto["arquivo_advertencias"], Trabalho() + "/ADVERTENCIAS.TXT");
  EXPECT_FALSE(objeto.contains("erro"));
  // One entry per line of the warnings file, in its order, codes and lines as integers.
  const std::string arquivo = LeBytes(Advertencias());
  const auto& advertencias = objeto["advertencias"];
  ASSERT_EQ(advertencias.size(), Linhas(arquivo));
  EXPECT_EQ(objeto["total_advertencias"], Linhas(arquivo));
  std::size_t inicio = 0;
  for (const auto& advertencia : advertencias) {
    const std::string linha = arquivo.substr(inicio, arquivo.find('\r', inicio) - inicio);
    inicio = arquivo.find('\n', inicio) + 1;
    EXPECT_EQ(std::to_string(advertencia["codigo"].get<int>()), linha.substr(0, linha.find('#')));
    EXPECT_EQ(advertencia["linha"].get<long long>(),
              std::stoll(linha.substr(linha.rfind('#') + 1)));
    EXPECT_NE(advertencia["mensagem"], "");
  }
  EXPECT_EQ(advertencias[0]["mensagem"], "Tipo de Nota de Produtor inválida");
}

TEST_F(Programa, TipoIdentificadoPelaPrimeiraLinha) {
  const nlohmann::json notas =
      Objeto(Executa({Amostra("notas-limpo.txt"), "-d", Trabalho(), inscricao, "--json"}));
  EXPECT_EQ(notas["tipo"], "notas");
  EXPECT_EQ(notas["aceito"], true);
  const Execucao fichas =
      Executa({"auto", Amostra("fichas-limpo.txt"), "-d", Trabalho(), "--json"});
  const nlohmann::json objeto = Objeto(fichas);
  EXPECT_EQ(objeto["tipo"], "fichas");
  // A form run always ends at its trailer with 8; a clean one leaves no warnings file.
  EXPECT_EQ(objeto["status"], 8);
  EXPECT_EQ(objeto["aceito"], true);
  EXPECT_EQ(fichas.codigo, 0);
  EXPECT_FALSE(TemAdvertencias());
}

TEST_F(Programa, ArquivoDeTipoDesconhecidoEUsoIncorreto) {
  const std::string arquivo = diretorio.Arquivo("estranho.txt");
  GravaBytes(arquivo, "linha curta\r\n");
  const Execucao execucao = Executa({arquivo, "-d", Trabalho()});
  EXPECT_EQ(execucao.codigo, 2);
  EXPECT_EQ(execucao.saida, "");
  EXPECT_EQ(execucao.erros,
            "quorvvalida: não foi possível identificar o tipo do arquivo " + arquivo +
                ": a primeira linha tem 11 caracteres, e são esperados 160 (notas fiscais de "
                "produtor) ou 260 (ficha cadastral); use 'quorvvalida notas' ou 'quorvvalida "
                "fichas' para escolher\n");
  const nlohmann::json objeto = Objeto(Executa({arquivo, "-d", Trabalho(), "--json"}));
  EXPECT_EQ(objeto["objeto"], "erro");
  EXPECT_EQ(objeto["arquivo"], arquivo);
  EXPECT_EQ(objeto["erro"]["tipo"], "tipo_nao_identificado");
  EXPECT_EQ(objeto["codigo_saida"], 2);
}

TEST_F(Programa, ArquivoInexistenteEFalhaDeEntrada) {
  const std::string arquivo = diretorio.Arquivo("nao-existe.txt");
  const Execucao texto = Executa({"notas", arquivo, "-d", Trabalho(), "-q", inscricao});
  EXPECT_EQ(texto.codigo, 3);
  EXPECT_EQ(texto.saida, "");
  EXPECT_EQ(texto.erros, "quorvvalida: arquivo não encontrado: " + arquivo + "\n");
  const Execucao json = Executa({"notas", arquivo, "-d", Trabalho(), "--json", inscricao});
  EXPECT_EQ(json.codigo, 3);
  EXPECT_EQ(json.erros, "");
  const nlohmann::json objeto = Objeto(json);
  EXPECT_EQ(objeto["status"], 9);
  EXPECT_EQ(objeto["aceito"], false);
  EXPECT_EQ(objeto["erro"]["tipo"], "entrada_inacessivel");
  EXPECT_EQ(objeto["erro"]["mensagem"], "arquivo não encontrado: " + arquivo);
  EXPECT_EQ(objeto["codigo_saida"], 3);
  EXPECT_FALSE(TemAdvertencias());
}

TEST_F(Programa, DiretorioInexistenteEFalhaDeEntrada) {
  const std::string ausente = diretorio.Arquivo("nao/existe");
  const Execucao execucao =
      Executa({"notas", Amostra("notas-limpo.txt"), "-d", ausente, "-q", inscricao});
  EXPECT_EQ(execucao.codigo, 3);
  EXPECT_EQ(execucao.erros, "quorvvalida: diretório de trabalho não encontrado: " + ausente + "\n");
}

// A run that could not start shows no warnings: a warnings file that it did not write is named
// as an earlier run's, never listed as this run's.
TEST_F(Programa, SoAsAdvertenciasDestaExecucao) {
  // The working directory's ADVERTENCIAS.TXT is a folder: the run cannot create its own.
  fs::create_directory(fs::u8path(Advertencias()));
  const Execucao pasta =
      Executa({"notas", Amostra("notas-com-defeitos.txt"), "-d", Trabalho(), "--json", inscricao});
  EXPECT_EQ(pasta.codigo, 3);
  const nlohmann::json objeto = Objeto(pasta);
  EXPECT_EQ(objeto["status"], 9);
  EXPECT_FALSE(objeto.contains("arquivo_advertencias"));
  EXPECT_TRUE(objeto["advertencias"].empty());
  EXPECT_EQ(objeto["erro"]["tipo"], "advertencias_nao_criadas");
  fs::remove(fs::u8path(Advertencias()));

  // A warnings file of an earlier run, validated as the input: refused, left as it was.
  Executa({"notas", Amostra("notas-com-defeitos.txt"), "-d", Trabalho(), inscricao, "-q"});
  const std::string antes = LeBytes(Advertencias());
  ASSERT_FALSE(antes.empty());
  const Execucao propria = Executa({"notas", Advertencias(), "-d", Trabalho(), inscricao});
  EXPECT_EQ(propria.codigo, 3);
  EXPECT_EQ(propria.saida,
            "Resultado:          não validado\n"
            "Arquivo:            " +
                Advertencias() +
                "\n"
                "Tipo:               notas fiscais de produtor\n"
                "Número da remessa:  (não lido)\n"
                "Status:             9 (arquivo não validado)\n"
                "Advertências:       nenhuma\n");
  EXPECT_EQ(propria.erros,
            "quorvvalida: o arquivo a validar é o próprio ADVERTENCIAS.TXT do diretório de "
            "trabalho (" +
                Advertencias() +
                "), que a validação substituiria; nada foi validado e o arquivo ficou como estava; "
                "use outro diretório de trabalho (-d)\n");
  EXPECT_EQ(LeBytes(Advertencias()), antes);
}

// The same file by identity, whatever its path: a link, "./", "..".
TEST_F(Programa, EntradaQueEOArquivoDeAdvertenciasPorOutroCaminho) {
  Executa({"fichas", Amostra("fichas-com-defeitos.txt"), "-d", Trabalho(), "-q"});
  const std::string antes = LeBytes(Advertencias());
  ASSERT_FALSE(antes.empty());
  const std::string link = diretorio.Arquivo("link.txt");
  fs::create_symlink(fs::u8path(Advertencias()), fs::u8path(link));
  for (const std::string& caminho :
       {link, Trabalho() + "/./ADVERTENCIAS.TXT", Trabalho() + "/../trabalho/ADVERTENCIAS.TXT"}) {
    const nlohmann::json objeto = Objeto(Executa({"fichas", caminho, "-d", Trabalho(), "--json"}));
    EXPECT_EQ(objeto["erro"]["tipo"], "entrada_e_advertencias") << caminho;
    EXPECT_EQ(objeto["codigo_saida"], 3);
    const nlohmann::json web =
        Objeto(Executa({"web", caminho, "-r", "R.TXT", "-d", Trabalho(), "--tipo", "F", "--json"}));
    EXPECT_EQ(web["erro"]["tipo"], "entrada_e_advertencias") << caminho;
    EXPECT_EQ(web["resultado"], false);
  }
  EXPECT_EQ(LeBytes(Advertencias()), antes);
  EXPECT_FALSE(fs::exists(fs::u8path(Trabalho() + "/R.TXT")));
}

TEST_F(Programa, RetornoQueEAEntradaERecusado) {
  const std::string arquivo = diretorio.Arquivo("remessa.txt");
  GravaBytes(arquivo, LeBytes(Amostra("notas-com-defeitos.txt")));
  const Execucao execucao = Executa({"web", arquivo, "-r", "../remessa.txt", "-d", Trabalho(),
                                     "--programa-chamador", "X", inscricao});
  EXPECT_EQ(execucao.codigo, 3);
  EXPECT_EQ(execucao.erros, "quorvvalida: o arquivo de retorno " + arquivo +
                                " seria o próprio arquivo a validar ou o ADVERTENCIAS.TXT do "
                                "diretório de trabalho; nada foi validado nem gravado\n");
  EXPECT_EQ(LeBytes(arquivo), LeBytes(Amostra("notas-com-defeitos.txt")));
  EXPECT_FALSE(TemAdvertencias());
}

// A warnings file that cannot be written whole is a failure of output, told as such.
TEST_F(Programa, EscritaQueFalhaEFalhaDeSaida) {
  fs::create_symlink("/dev/full", fs::u8path(Advertencias()));
  const Execucao texto =
      Executa({"notas", Amostra("notas-com-defeitos.txt"), "-d", Trabalho(), inscricao, "-q"});
  EXPECT_EQ(texto.codigo, 3);
  EXPECT_EQ(texto.saida, "");
  EXPECT_EQ(texto.erros,
            "quorvvalida: falha ao gravar o arquivo de advertências (disco cheio ou erro de "
            "entrada e saída): " +
                Advertencias() + "; ele não contém todas as advertências da validação\n");
  const nlohmann::json objeto =
      Objeto(Executa({"fichas", Amostra("fichas-com-defeitos.txt"), "-d", Trabalho(), "--json"}));
  EXPECT_EQ(objeto["status"], 8);
  EXPECT_EQ(objeto["aceito"], false);
  EXPECT_EQ(objeto["erro"]["tipo"], "escrita_advertencias");
  EXPECT_EQ(objeto["codigo_saida"], 3);

  const std::string cheio = Trabalho() + "/CHEIO.TXT";
  fs::create_symlink("/dev/full", fs::u8path(cheio));
  const std::string outro = diretorio.Arquivo("outro");
  fs::create_directory(fs::u8path(outro));
  const nlohmann::json web =
      Objeto(Executa({"web", Amostra("notas-com-defeitos.txt"), "-r", cheio, "-d", outro,
                      "--programa-chamador", "X", inscricao, "--json"}));
  EXPECT_EQ(web["resultado"], false);
  EXPECT_EQ(web["erro"]["tipo"], "escrita_retorno");
  EXPECT_EQ(web["codigo_saida"], 3);
}

// A faulty invoice file of 20,000 lines validated into a file system of 64 KiB: the warnings do
// not fit, and the run says so.
TEST_F(Programa, SistemaDeArquivosPequenoECheio) {
  if (std::system("unshare --mount --map-root-user true > /dev/null 2>&1") != 0) {
    GTEST_SKIP() << "esta máquina não deixa montar um sistema de arquivos pequeno (unshare)";
  }
  const std::string arquivo = Gerado("notas", 20000, true);
  const std::string pequeno = Trabalho();
  const Execucao execucao =
      Shell("unshare --mount --map-root-user sh -c " +
            Aspas("mount -t tmpfs -o size=64k tmpfs " + Aspas(pequeno) + " && " +
                  Aspas(QUORV_PROGRAMA) + " notas " + Aspas(arquivo) + " -d " + Aspas(pequeno) +
                  " " + Aspas(inscricao) + " --json"));
  EXPECT_EQ(execucao.codigo, 3) << execucao.erros;
  const nlohmann::json objeto = Objeto(execucao);
  EXPECT_EQ(objeto["erro"]["tipo"], "escrita_advertencias");
  EXPECT_EQ(objeto["aceito"], false);
}

TEST_F(Programa, AjudaTemATabelaDeSaida) {
  const std::string tabela =
      "Códigos de saída:\n"
      "  0  aceito: validado sem advertências\n"
      "  1  advertências encontradas\n"
      "  2  uso incorreto: opção desconhecida, valor inválido ou argumento faltando\n"
      "  3  falha de entrada ou saída: arquivo ausente ou ilegível, diretório de trabalho "
      "ausente, falha de gravação\n"
      "  4  erro interno\n";
  const Execucao ajuda = Executa({"--help"});
  EXPECT_EQ(ajuda.codigo, 0);
  EXPECT_NE(ajuda.saida.find(tabela), std::string::npos) << ajuda.saida;
  EXPECT_NE(ajuda.saida.find("Comandos:\n  notas"), std::string::npos);
  EXPECT_EQ(Executa({"notas", "--help"}).saida.find(tabela) != std::string::npos, true);
  const Execucao versao = Executa({"--version"});
  EXPECT_EQ(versao.saida, "quorvvalida 1.1.0.1\n");
  const nlohmann::json json = Objeto(Executa({"--version", "--json"}));
  EXPECT_EQ(json["versao"], "1.1.0.1");
}

// Every usage error: one Portuguese line on stderr, or one JSON object with --json; exit 2.
TEST_F(Programa, ErrosDeUsoNumaLinhaOuNumObjeto) {
  struct Caso {
    std::vector<std::string> argumentos;
    std::string mensagem;
  };
  const std::vector<Caso> casos = {
      {{"--opcao-que-nao-existe"}, "opção desconhecida: --opcao-que-nao-existe"},
      {{}, "falta o ARQUIVO a validar"},
      {{"web", "a.txt"}, "falta o nome do arquivo de retorno (-r RETORNO)"},
      {{"mensagem", "outros", "1"}, "argumento não esperado: outros"},
      {{"notas", "a.txt", "--limite"}, "falta o valor da opção --limite"},
      {{"mensagem", "notas", "77", "78"}, "argumento não esperado: 78"},
      {{"web", "a.txt", "-r", "R", "--origem", "X"},
       "a opção --origem não vale para o comando web"},
      {{"mensagem", "notas", "77", "-d", "x"},
       "a opção --diretorio não vale para o comando mensagem"},
      {{"a.txt", "notas", "b.txt"}, "argumento não esperado: a.txt"},
      {{"notas", "-", "-"}, "a entrada padrão (-) só pode ser lida uma vez"},
  };
  for (const Caso& caso : casos) {
    const Execucao texto = Executa(caso.argumentos);
    EXPECT_EQ(texto.codigo, 2) << caso.mensagem;
    EXPECT_EQ(texto.saida, "");
    EXPECT_EQ(texto.erros, "quorvvalida: " + caso.mensagem + "; veja 'quorvvalida --help'\n");
    std::vector<std::string> comJson = caso.argumentos;
    comJson.insert(comJson.begin(), "--json");
    const Execucao json = Executa(comJson);
    EXPECT_EQ(json.codigo, 2) << caso.mensagem;
    EXPECT_EQ(json.erros, "");
    const nlohmann::json objeto = Objeto(json);
    EXPECT_EQ(objeto["objeto"], "erro");
    EXPECT_EQ(objeto["erro"]["tipo"], "uso");
    EXPECT_EQ(objeto["erro"]["mensagem"], caso.mensagem);
  }
}

// Values are checked: each refused with the option and what it accepts.
TEST_F(Programa, ValoresForaDoQueAOpcaoAceita) {
  const std::string chave =
      "valor inválido '{}'; use um número de 0 a 9007199254740992 (com fração, até 15 "
      "algarismos), como 123 ou 12,5";
  const auto comValor = [&](const std::string& valor) {
    std::string texto = chave;
    return texto.replace(texto.find("{}"), 2, valor);
  };
  const std::vector<std::pair<std::vector<std::string>, std::string>> casos = {
      {{"--chave-remessa", "nan"}, "--chave-remessa: " + comValor("nan")},
      {{"--chave-remessa", "inf"}, "--chave-remessa: " + comValor("inf")},
      {{"--chave-processamento", "-1"}, "--chave-processamento: " + comValor("-1")},
      {{"--chave-remessa", "9007199254740993"}, "--chave-remessa: " + comValor("9007199254740993")},
      {{"--chave-remessa", "1e3"}, "--chave-remessa: " + comValor("1e3")},
      {{"--limite", "0"}, "--limite: valor inválido '0'; use um número inteiro de 1 a 1000000000"},
      {{"--limite", "-3"},
       "--limite: valor inválido '-3'; use um número inteiro de 1 a 1000000000"},
      {{"-j", "0"}, "--tarefas: valor inválido '0'; use um número inteiro de 1 a 256"},
      {{"--hoje", "20240230"},
       "--hoje: data inválida '20240230'; use uma data do calendário em AAAAMMDD, como 20240630"},
      {{"--separador", ""},
       "--separador: separador inválido; use um ou mais caracteres, sem quebra de linha"},
  };
  for (const auto& [opcoes, mensagem] : casos) {
    std::vector<std::string> argumentos{"notas", Amostra("notas-limpo.txt"), "-d", Trabalho()};
    argumentos.insert(argumentos.end(), opcoes.begin(), opcoes.end());
    const Execucao execucao = Executa(argumentos);
    EXPECT_EQ(execucao.codigo, 2) << mensagem;
    EXPECT_EQ(execucao.erros, "quorvvalida: " + mensagem + "; veja 'quorvvalida --help'\n");
    EXPECT_FALSE(TemAdvertencias());
  }
  const Execucao codigo = Executa({"mensagem", "notas", "40000"});
  EXPECT_EQ(codigo.codigo, 2);
  EXPECT_EQ(codigo.erros,
            "quorvvalida: CODIGO: código inválido '40000'; use um número inteiro de -32768 a "
            "32767; veja 'quorvvalida --help'\n");
  // Keys the library takes: a fraction with a comma or a point.
  const Execucao aceitas =
      Executa({"notas", Amostra("notas-com-defeitos.txt"), "-d", Trabalho(), "--chave-remessa",
               "12,5", "--chave-processamento", "9007199254740992", inscricao, "-q"});
  EXPECT_EQ(aceitas.codigo, 1) << aceitas.erros;
  const std::string primeira = LeBytes(Advertencias()).substr(0, 40);
  EXPECT_NE(primeira.find("#12,5#9007199254740992#"), std::string::npos) << primeira;
}

TEST_F(Programa, GeradorRecusaValoresEmPortugues) {
  const Execucao negativo = Shell(Aspas(QUORV_GERADOR) + " notas -n -5");
  EXPECT_EQ(negativo.codigo, 2);
  EXPECT_EQ(negativo.saida, "");
  EXPECT_EQ(negativo.erros,
            "quorvvalida-gerador: --linhas: valor inválido '-5'; use um número inteiro de 1 a "
            "1000000000000; veja 'quorvvalida-gerador --help'\n");
  const Execucao tipo = Shell(Aspas(QUORV_GERADOR) + " outros");
  EXPECT_EQ(tipo.codigo, 2);
  EXPECT_EQ(tipo.erros,
            "quorvvalida-gerador: TIPO: tipo inválido 'outros'; use notas ou fichas; veja "
            "'quorvvalida-gerador --help'\n");
  const Execucao cheio = Shell(Aspas(QUORV_GERADOR) + " fichas -n 10 -o /dev/full");
  EXPECT_EQ(cheio.codigo, 3);
  EXPECT_EQ(cheio.erros,
            "quorvvalida-gerador: falha ao escrever /dev/full (disco cheio ou erro de entrada e "
            "saída)\n");
}

TEST_F(Programa, QuietoEsconderResumosNuncaAvisosDoAmbiente) {
  const Execucao quieto =
      Executa({"-q", Amostra("notas-com-defeitos.txt"), "-d", Trabalho(), inscricao});
  EXPECT_EQ(quieto.codigo, 1);
  EXPECT_EQ(quieto.saida, "");
  EXPECT_EQ(quieto.erros, "");
  const std::string aviso =
      "quorvvalida: aviso: a biblioteca de inscrição estadual (libDllInscE32.so) não foi "
      "encontrada; toda inscrição estadual de QZ será recusada. Informe-a com --inscricao-lib "
      "CAMINHO ou LD_LIBRARY_PATH.\n";
  for (const char* modo : {"-q", "--json"}) {
    const Execucao semBiblioteca =
        Executa({"notas", Amostra("notas-limpo.txt"), "-d", Trabalho(), modo}, "LD_LIBRARY_PATH=");
    EXPECT_EQ(semBiblioteca.codigo, 1);
    EXPECT_EQ(semBiblioteca.erros, aviso);
  }
}

TEST_F(Programa, OpcoesChegamAoValidador) {
  const Execucao execucao = Executa({"notas", Amostra("notas-com-defeitos.txt"), "-d", Trabalho(),
                                     inscricao, "--chave-remessa", "123", "--chave-processamento",
                                     "7", "--separador", ";", "--json"});
  EXPECT_EQ(execucao.codigo, 1);
  const std::string arquivo = LeBytes(Advertencias());
  const std::string primeira = arquivo.substr(0, arquivo.find('\r'));
  const std::string codigo = primeira.substr(0, primeira.find(';'));
  EXPECT_EQ(primeira.substr(codigo.size(), 7), ";123;7;");
  const nlohmann::json objeto = Objeto(execucao);
  EXPECT_EQ(std::to_string(objeto["advertencias"][0]["codigo"].get<int>()), codigo);
  EXPECT_EQ(objeto["total_advertencias"], Linhas(arquivo));
}

TEST_F(Programa, OrigemA0SoConta) {
  const Execucao execucao = Executa(
      {"notas", Amostra("notas-com-defeitos.txt"), "-d", Trabalho(), "--origem", "A0", "--json"});
  EXPECT_EQ(execucao.codigo, 0) << execucao.saida;
  EXPECT_EQ(Objeto(execucao)["status"], 0);
}

TEST_F(Programa, BibliotecaDeInscricaoInexistente) {
  const std::string ausente = diretorio.Arquivo("nao-existe.so");
  const Execucao execucao =
      Executa({"notas", Amostra("notas-limpo.txt"), "-d", Trabalho(), "--inscricao-lib", ausente});
  EXPECT_EQ(execucao.codigo, 3);
  EXPECT_EQ(execucao.erros,
            "quorvvalida: não foi possível carregar a biblioteca de inscrição estadual: " +
                ausente + "\n");
}

TEST_F(Programa, WebEscreveORetornoNoDiretorio) {
  const Execucao comDefeitos =
      Executa({"web", Amostra("notas-com-defeitos.txt"), "-r", "RETORNO.TXT", "-d", Trabalho(),
               "--programa-chamador", "SISTEMA", inscricao});
  EXPECT_EQ(comDefeitos.codigo, 1) << comDefeitos.erros;
  const std::string retorno = LeBytes(Trabalho() + "/RETORNO.TXT");
  EXPECT_EQ(retorno.rfind("SECRETARIA DA FAZENDA - ESTADO DO VALDORIA\r\n", 0), 0u);
  EXPECT_FALSE(TemAdvertencias());
  EXPECT_NE(comDefeitos.saida.find("Resultado:          com advertências; arquivo de retorno em " +
                                   Trabalho() + "/RETORNO.TXT\n"),
            std::string::npos);

  const Execucao limpo =
      Executa({"web", Amostra("fichas-limpo.txt"), "-r", "OUTRO.TXT", "-d", Trabalho(), "--json"});
  EXPECT_EQ(limpo.codigo, 0);
  const nlohmann::json objeto = Objeto(limpo);
  EXPECT_EQ(objeto["resultado"], true);
  EXPECT_EQ(objeto["aceito"], true);
  EXPECT_FALSE(objeto.contains("arquivo_retorno"));
  EXPECT_FALSE(fs::exists(fs::u8path(Trabalho() + "/OUTRO.TXT")));
}

// The return path is made with path operations: a relative name inside the directory, an
// absolute path as it is; its folder must exist.
TEST_F(Programa, WebComCaminhosDeRetorno) {
  const std::string outra = diretorio.Arquivo("outra pasta");
  fs::create_directory(fs::u8path(outra));
  const nlohmann::json absoluto =
      Objeto(Executa({"web", Amostra("notas-com-defeitos.txt"), "-r", outra + "/R.TXT", "-d",
                      Trabalho(), "--programa-chamador", "SISTEMA", inscricao, "--json"}));
  EXPECT_EQ(absoluto["arquivo_retorno"], outra + "/R.TXT");
  EXPECT_EQ(LeBytes(outra + "/R.TXT").rfind("SECRETARIA DA FAZENDA", 0), 0u);
  fs::create_directory(fs::u8path(Trabalho() + "/sub"));
  const nlohmann::json relativo =
      Objeto(Executa({"web", Amostra("fichas-com-defeitos.txt"), "-r", "sub/R.TXT", "-d",
                      Trabalho(), "--programa-chamador", "X", "--json"}));
  EXPECT_EQ(relativo["arquivo_retorno"], Trabalho() + "/sub/R.TXT");
  EXPECT_TRUE(fs::exists(fs::u8path(Trabalho() + "/sub/R.TXT")));

  const Execucao semPasta =
      Executa({"web", Amostra("notas-com-defeitos.txt"), "-r", "nao/ha/R.TXT", "-d", Trabalho()});
  EXPECT_EQ(semPasta.codigo, 3);
  EXPECT_EQ(semPasta.saida, "");
  EXPECT_EQ(semPasta.erros,
            "quorvvalida: a pasta do arquivo de retorno não existe: " + Trabalho() + "/nao/ha\n");
  EXPECT_FALSE(TemAdvertencias());
}

TEST_F(Programa, WebAjudaDizOQueAOrigemPadraoFaz) {
  const Execucao ajuda = Executa({"web", "--help"});
  EXPECT_EQ(ajuda.codigo, 0);
  EXPECT_NE(ajuda.saida.find("validado com a origem \"A0\" só tem os registros dos grupos "
                             "contados"),
            std::string::npos)
      << ajuda.saida;
  EXPECT_NE(ajuda.saida.find("só passa pelas regras de estrutura, sem as verificações de "
                             "campos"),
            std::string::npos);
  EXPECT_NE(ajuda.saida.find("--programa-chamador"), std::string::npos);
}

TEST_F(Programa, WebSemArquivoDiretorioOuTipo) {
  const std::string estranho = diretorio.Arquivo("estranho.txt");
  GravaBytes(estranho, "linha curta\r\n");
  const std::string ausente = diretorio.Arquivo("nao-existe.txt");
  const Execucao semArquivo = Executa({"web", ausente, "-r", "R.TXT", "-d", Trabalho()});
  EXPECT_EQ(semArquivo.codigo, 3);
  EXPECT_EQ(semArquivo.erros, "quorvvalida: arquivo não encontrado: " + ausente + "\n");
  const std::string semDir = diretorio.Arquivo("nao/ha");
  const Execucao semDiretorio =
      Executa({"web", Amostra("notas-com-defeitos.txt"), "-r", "R.TXT", "-d", semDir, "--json"});
  EXPECT_EQ(semDiretorio.codigo, 3);
  EXPECT_EQ(Objeto(semDiretorio)["erro"]["tipo"], "diretorio_inexistente");
  const Execucao semTipo = Executa({"web", estranho, "-r", "R.TXT", "-d", Trabalho()});
  EXPECT_EQ(semTipo.codigo, 2);
  EXPECT_NE(semTipo.erros.find("informe --tipo P ou --tipo F"), std::string::npos);
  EXPECT_FALSE(fs::exists(fs::u8path(Trabalho() + "/R.TXT")));
}

TEST_F(Programa, WebComTipoComoDigitado) {
  const Execucao minusculo = Executa({"web", Amostra("notas-com-defeitos.txt"), "-r", "R.TXT", "-d",
                                      Trabalho(), "--tipo", "p", "--json"});
  // The facade knows "P" and "F" only: "p" validates nothing and answers false.
  EXPECT_EQ(minusculo.codigo, 1);
  EXPECT_EQ(Objeto(minusculo)["tipo"], "nenhum");
  EXPECT_FALSE(fs::exists(fs::u8path(Trabalho() + "/R.TXT")));
  const Execucao fichas = Executa({"web", Amostra("fichas-com-defeitos.txt"), "-r", "R.TXT", "-d",
                                   Trabalho(), "--tipo", "F", "--programa-chamador", "X"});
  EXPECT_EQ(fichas.codigo, 1);
  EXPECT_TRUE(fs::exists(fs::u8path(Trabalho() + "/R.TXT")));
}

TEST_F(Programa, MensagemDoCatalogo) {
  const Execucao notas = Executa({"mensagem", "notas", "77"});
  EXPECT_EQ(notas.codigo, 0);
  EXPECT_EQ(notas.saida, "Linha com tamanho Incorreto\n");
  EXPECT_EQ(notas.erros, "");
  EXPECT_EQ(Executa({"mensagem", "fichas", "92"}).saida, "Código do CNAE Fiscal inválido \n");
  const nlohmann::json json = Objeto(Executa({"mensagem", "fichas", "92", "--json"}));
  EXPECT_EQ(json["codigo"], 92);
  EXPECT_EQ(json["conhecido"], true);
  EXPECT_EQ(Executa({"mensagem", "notas", "sete"}).codigo, 2);
}

// A code the catalogue does not hold: its answer all the same, exit 1, and the code told unknown.
TEST_F(Programa, MensagemDeCodigoDesconhecido) {
  const Execucao notas = Executa({"mensagem", "notas", "9999"});
  EXPECT_EQ(notas.codigo, 1);
  EXPECT_EQ(notas.saida, "Erro não cadastrado\n");
  EXPECT_EQ(notas.erros,
            "quorvvalida: o código 9999 não está no catálogo de notas fiscais de produtor; o "
            "texto mostrado é a resposta padrão do catálogo\n");
  const Execucao fichas = Executa({"mensagem", "fichas", "0", "--json"});
  EXPECT_EQ(fichas.codigo, 1);
  const nlohmann::json objeto = Objeto(fichas);
  EXPECT_EQ(objeto["mensagem"], "");
  EXPECT_EQ(objeto["conhecido"], false);
  EXPECT_EQ(objeto["codigo_saida"], 1);
}

TEST_F(Programa, AdvertenciasListadasPeloLeitor) {
  Executa({"fichas", Amostra("fichas-com-defeitos.txt"), "-d", Trabalho()});
  const Execucao lista = Executa({"advertencias", "fichas", Advertencias(), "--json"});
  EXPECT_EQ(lista.codigo, 0) << lista.erros;
  const nlohmann::json objeto = Objeto(lista);
  ASSERT_GT(objeto["total"].get<int>(), 0);
  EXPECT_EQ(objeto["advertencias"].size(), objeto["total"].get<std::size_t>());
  EXPECT_EQ(objeto["total"], Linhas(LeBytes(Advertencias())));
  EXPECT_EQ(objeto["advertencias"][0]["descricao"], "Número da solicitação inválida");
  const Execucao texto = Executa({"advertencias", "fichas", Advertencias()});
  EXPECT_EQ(texto.saida.substr(texto.saida.rfind('\n', texto.saida.size() - 2) + 1),
            std::to_string(objeto["total"].get<int>()) + " advertência(s)\n");
}

// A file that is not a warnings file of the kind asked for is refused, and says what it is.
TEST_F(Programa, AdvertenciasRecusaOutroArquivo) {
  const std::string ausente = diretorio.Arquivo("nada.txt");
  const Execucao semArquivo = Executa({"advertencias", "notas", ausente});
  EXPECT_EQ(semArquivo.codigo, 3);
  EXPECT_EQ(semArquivo.erros, "quorvvalida: arquivo não encontrado: " + ausente + "\n");

  const std::string remessa = Amostra("notas-com-defeitos.txt");
  const Execucao remessaComoAdvertencias = Executa({"advertencias", "notas", remessa});
  EXPECT_EQ(remessaComoAdvertencias.codigo, 3);
  EXPECT_EQ(remessaComoAdvertencias.saida, "");
  EXPECT_EQ(remessaComoAdvertencias.erros,
            "quorvvalida: " + remessa +
                " não é um arquivo de advertências: a linha 1 não tem o código, as duas chaves, o "
                "registro de 160 caracteres e o número da linha separados por #\n");

  Executa({"notas", Amostra("notas-com-defeitos.txt"), "-d", Trabalho(), inscricao, "-q"});
  const Execucao outroTipo = Executa({"advertencias", "fichas", Advertencias(), "--json"});
  EXPECT_EQ(outroTipo.codigo, 3);
  const nlohmann::json objeto = Objeto(outroTipo);
  EXPECT_EQ(objeto["erro"]["tipo"], "nao_e_advertencias");
  EXPECT_EQ(objeto["erro"]["mensagem"],
            Advertencias() +
                " é um arquivo de advertências de notas fiscais de produtor, não de ficha "
                "cadastral; use: quorvvalida advertencias notas '" +
                Advertencias() + "'");
}

// Peak resident memory of a child process run through the shell, in KiB, and its exit code.
std::pair<long, int> PicoDeMemoria(const std::string& comando) {
  const pid_t filho = fork();
  if (filho == 0) {
    execl("/bin/sh", "sh", "-c", ("exec " + comando).c_str(), static_cast<char*>(nullptr));
    _exit(127);
  }
  int estado = 0;
  rusage uso{};
  wait4(filho, &estado, 0, &uso);
  return {uso.ru_maxrss, WIFEXITED(estado) ? WEXITSTATUS(estado) : -1};
}

// The warnings of a large run are listed as they are read: memory stays bounded.
TEST_F(Programa, AdvertenciasEmJsonComMemoriaLimitada) {
#if defined(__SANITIZE_ADDRESS__)
  GTEST_SKIP() << "sob o AddressSanitizer a memória do programa inclui a quarentena e a sombra do "
                  "próprio sanitizador";
#endif
  const std::string arquivo = Gerado("fichas", 60000, true);
  Executa({"fichas", arquivo, "-d", Trabalho(), "-q"});
  const std::uintmax_t tamanho = fs::file_size(fs::u8path(Advertencias()));
  ASSERT_GT(tamanho, 40u << 20) << "o arquivo de advertências deveria ter mais de 40 MiB";
  const auto [pico, codigo] = PicoDeMemoria(Aspas(QUORV_PROGRAMA) + " advertencias fichas " +
                                            Aspas(Advertencias()) + " --json > /dev/null");
  EXPECT_EQ(codigo, 0);
  EXPECT_GT(pico, 0);
  EXPECT_LT(pico, 64 * 1024) << "pico de " << pico << " KiB";
  const auto [validacao, codigoValidacao] =
      PicoDeMemoria(Aspas(QUORV_PROGRAMA) + " fichas " + Aspas(arquivo) + " -d " +
                    Aspas(Trabalho()) + " --json > /dev/null");
  EXPECT_EQ(codigoValidacao, 1);
  EXPECT_GT(validacao, 0);
  EXPECT_LT(validacao, 64 * 1024) << "pico de " << validacao << " KiB";
}

// On a terminal the bar is drawn while the file is read, fits the terminal's width and is wiped
// at the end; never with -q, never into a file.
TEST_F(Programa, BarraDeProgressoSoNumTerminalENaLargura) {
  const std::string arquivo = Gerado("notas", 200000, false);
  const Execucao terminal = ExecutaNumTerminal({"notas", arquivo, "-d", Trabalho(), inscricao}, 50);
  EXPECT_EQ(terminal.codigo, 0) << terminal.erros;
  EXPECT_NE(terminal.erros.find("linhas/s"), std::string::npos) << terminal.erros;
  EXPECT_EQ(terminal.erros.substr(terminal.erros.size() - 4), "\r\x1b[K");
  // Every drawing: back to the line's start, at most 49 columns, the rest of the line erased.
  std::size_t desenhos = 0;
  for (std::size_t inicio = terminal.erros.find('\r'); inicio != std::string::npos;
       inicio = terminal.erros.find('\r', inicio + 1)) {
    const std::size_t fim = terminal.erros.find("\x1b[K", inicio);
    ASSERT_NE(fim, std::string::npos);
    EXPECT_LE(fim - inicio - 1, 49u) << terminal.erros.substr(inicio, fim - inicio);
    ++desenhos;
  }
  EXPECT_GE(desenhos, 2u);
  EXPECT_NE(terminal.saida.find("Status:             0"), std::string::npos) << terminal.saida;

  const Execucao quieto = ExecutaNumTerminal({"notas", arquivo, "-d", Trabalho(), inscricao, "-q"});
  EXPECT_EQ(quieto.codigo, 0);
  EXPECT_EQ(quieto.erros, "");
  const Execucao arquivoComum = Executa({"notas", arquivo, "-d", Trabalho(), inscricao});
  EXPECT_EQ(arquivoComum.codigo, 0);
  EXPECT_EQ(arquivoComum.erros, "");
}

// The bar reads the terminal's width at every drawing: a terminal made narrower while standard
// input is received gets narrower lines from then on.
TEST_F(Programa, BarraDeProgressoSegueARedimensao) {
  int canal[2];
  ASSERT_EQ(pipe2(canal, O_CLOEXEC), 0);
  const std::string bloco(1 << 20, 'x');
  const Execucao execucao = ExecutaNumTerminal(
      {"notas", "-", "-d", Trabalho(), inscricao, "--json"}, 100, canal[0],
      [&](int mestre, std::string& lido) {
        close(canal[0]);
        const auto esperaDesenho = [&] {
          char pedaco[4096];
          for (;;) {
            const ssize_t n = read(mestre, pedaco, sizeof pedaco);
            if (n <= 0) return;
            lido.append(pedaco, static_cast<std::size_t>(n));
            if (lido.find("\x1b[K", lido.size() - static_cast<std::size_t>(n) >= 3
                                        ? lido.size() - static_cast<std::size_t>(n) - 3
                                        : 0) != std::string::npos) {
              return;
            }
          }
        };
        EXPECT_EQ(write(canal[1], bloco.data(), bloco.size()), static_cast<ssize_t>(bloco.size()));
        esperaDesenho();
        winsize tamanho{};
        tamanho.ws_row = 24;
        tamanho.ws_col = 20;
        ioctl(mestre, TIOCSWINSZ, &tamanho);
        lido += "|redimensionado|";
        std::this_thread::sleep_for(std::chrono::milliseconds(150));
        EXPECT_EQ(write(canal[1], bloco.data(), bloco.size()), static_cast<ssize_t>(bloco.size()));
        esperaDesenho();
        close(canal[1]);
      });
  const std::size_t marca = execucao.erros.find("|redimensionado|");
  ASSERT_NE(marca, std::string::npos) << execucao.erros;
  const std::string antes = execucao.erros.substr(0, marca);
  const std::string depois = execucao.erros.substr(marca);
  EXPECT_NE(antes.find("\rlendo a entrada padrao: "), std::string::npos) << antes;
  EXPECT_EQ(antes.find("\rlendo a entrada pad\x1b[K"), std::string::npos) << antes;
  EXPECT_NE(depois.find("\rlendo a entrada pad\x1b[K"), std::string::npos) << depois;
  // The input was 2 MiB of no invoice at all: the run tells it, in JSON.
  EXPECT_EQ(execucao.codigo, 1);
  EXPECT_EQ(Objeto(execucao)["arquivo"], "-");
}

// Several files in one call: each in a subfolder of its own, JSON Lines in the order given, then
// the batch's summary; the exit code is the worst.
TEST_F(Programa, LoteDeArquivos) {
  const std::string a = diretorio.Arquivo("a");
  const std::string b = diretorio.Arquivo("b");
  fs::create_directories(fs::u8path(a));
  fs::create_directories(fs::u8path(b));
  GravaBytes(a + "/remessa.txt", LeBytes(Amostra("notas-limpo.txt")));
  GravaBytes(b + "/remessa.txt", LeBytes(Amostra("fichas-com-defeitos.txt")));
  const std::string ausente = diretorio.Arquivo("ausente.txt");
  const Execucao execucao = Executa({a + "/remessa.txt", b + "/remessa.txt", ausente, "-d",
                                     Trabalho(), inscricao, "-j", "2", "--json"});
  EXPECT_EQ(execucao.codigo, 3);
  const std::vector<nlohmann::json> objetos = Json(execucao);
  ASSERT_EQ(objetos.size(), 4u);
  EXPECT_EQ(objetos[0]["arquivo"], a + "/remessa.txt");
  EXPECT_EQ(objetos[0]["diretorio"], Trabalho() + "/1-remessa.txt");
  EXPECT_EQ(objetos[0]["codigo_saida"], 0);
  EXPECT_EQ(objetos[1]["tipo"], "fichas");
  EXPECT_EQ(objetos[1]["arquivo_advertencias"], Trabalho() + "/2-remessa.txt/ADVERTENCIAS.TXT");
  EXPECT_EQ(objetos[1]["codigo_saida"], 1);
  EXPECT_EQ(objetos[2]["objeto"], "erro");
  EXPECT_EQ(objetos[2]["arquivo"], ausente);
  EXPECT_EQ(objetos[3]["objeto"], "lote");
  EXPECT_EQ(objetos[3]["arquivos"], 3);
  EXPECT_EQ(objetos[3]["aceitos"], 1);
  EXPECT_EQ(objetos[3]["com_advertencias"], 1);
  EXPECT_EQ(objetos[3]["com_falha"], 1);
  EXPECT_EQ(objetos[3]["total_advertencias"], objetos[1]["total_advertencias"]);
  EXPECT_EQ(objetos[3]["codigo_saida"], 3);
  EXPECT_FALSE(TemAdvertencias());

  // A directory with --recursivo: its files in the order of their paths.
  const Execucao recursivo = Executa(
      {"auto", diretorio.Arquivo("a"), b, "--recursivo", "-d", Trabalho(), inscricao, "-q"});
  EXPECT_EQ(recursivo.codigo, 1);
  EXPECT_EQ(recursivo.saida, "");
  const Execucao semRecursivo = Executa({"auto", a, "-d", Trabalho(), inscricao});
  EXPECT_EQ(semRecursivo.codigo, 3);
  EXPECT_EQ(semRecursivo.erros, "quorvvalida: o caminho é um diretório, não um arquivo: " + a +
                                    "; use --recursivo para validar os arquivos dentro dele\n");
}

TEST_F(Programa, LoteEmTextoTerminaComOResumo) {
  const Execucao execucao =
      Executa({"notas", Amostra("notas-limpo.txt"), Amostra("notas-com-defeitos.txt"), "-d",
               Trabalho(), inscricao, "--limite", "1"});
  EXPECT_EQ(execucao.codigo, 1);
  EXPECT_NE(execucao.saida.find("\n\nResultado:          com advertências\n"), std::string::npos);
  const std::size_t total =
      Linhas(LeBytes(Trabalho() + "/2-notas-com-defeitos.txt/ADVERTENCIAS.TXT"));
  EXPECT_EQ(execucao.saida.substr(execucao.saida.rfind("Lote:")),
            "Lote:               2 arquivo(s): 1 aceito(s), 1 com advertências, 0 com falha; " +
                std::to_string(total) + " advertência(s) ao todo\n");
}

// Standard input: "-" validates what arrives, through a copy that is gone afterwards.
TEST_F(Programa, EntradaPadrao) {
  const Execucao execucao = Executa({"notas", "-", "-d", Trabalho(), inscricao, "--json"}, "",
                                    Amostra("notas-com-defeitos.txt"));
  EXPECT_EQ(execucao.codigo, 1) << execucao.erros;
  const nlohmann::json objeto = Objeto(execucao);
  EXPECT_EQ(objeto["arquivo"], "-");
  EXPECT_EQ(objeto["numero_remessa"], "000001");
  Executa(
      {"notas", Amostra("notas-com-defeitos.txt"), "-d", diretorio.Arquivo("."), inscricao, "-q"});
  EXPECT_EQ(LeBytes(Advertencias()), LeBytes(diretorio.Arquivo("ADVERTENCIAS.TXT")));
  // Only the warnings file is left in the working directory.
  std::vector<std::string> nomes;
  for (const auto& entrada : fs::directory_iterator(fs::u8path(Trabalho())))
    nomes.push_back(entrada.path().filename().u8string());
  EXPECT_EQ(nomes, std::vector<std::string>{"ADVERTENCIAS.TXT"});
  const Execucao tipo =
      Shell("sh -c " + Aspas("cat " + Aspas(Amostra("fichas-limpo.txt")) + " | " +
                             Aspas(QUORV_PROGRAMA) + " - -d " + Aspas(Trabalho()) + " -q"));
  EXPECT_EQ(tipo.codigo, 0) << tipo.erros;
  EXPECT_FALSE(TemAdvertencias());
}

// A file in UTF-8, with a byte-order mark, with LF line ends or of the other kind: besides the
// warnings, one line that tells the fix.
TEST_F(Programa, DiagnosticoDoArquivo) {
  const std::string limpo = LeBytes(Amostra("notas-limpo.txt"));
  std::string utf8 = limpo;
  utf8.replace(utf8.find("MUNICIPIO"), 9, "MUNIC\xC3\x8DPIO");
  const std::string arquivoUtf8 = diretorio.Arquivo("utf8.txt");
  GravaBytes(arquivoUtf8, utf8);
  const Execucao emUtf8 = Executa({"notas", arquivoUtf8, "-d", Trabalho(), inscricao, "-q"});
  EXPECT_EQ(emUtf8.codigo, 1);
  EXPECT_EQ(emUtf8.erros,
            "quorvvalida: diagnóstico: o arquivo está em UTF-8: os acentos ocupam dois bytes e "
            "as linhas passam de 160 caracteres; converta-o para Windows-1252 com: iconv -f "
            "UTF-8 -t WINDOWS-1252 '" +
                arquivoUtf8 + "' > '" + diretorio.Arquivo("utf8-cp1252.txt") + "'\n");
  EXPECT_TRUE(TemAdvertencias());

  const std::string arquivoBom = diretorio.Arquivo("bom.txt");
  GravaBytes(arquivoBom, "\xEF\xBB\xBF" + LeBytes(Amostra("fichas-limpo.txt")));
  const nlohmann::json bom = Objeto(Executa({"fichas", arquivoBom, "-d", Trabalho(), "--json"}));
  EXPECT_EQ(bom["diagnostico"]["tipo"], "bom_utf8");
  EXPECT_EQ(bom["diagnostico"]["mensagem"],
            "o arquivo começa com a marca de ordem de bytes (BOM) do UTF-8, que não faz parte do "
            "primeiro registro; tire-a com: tail -c +4 '" +
                arquivoBom + "' > '" + diretorio.Arquivo("bom-sem-bom.txt") + "'");

  std::string lf = limpo;
  for (std::size_t i = lf.find("\r\n"); i != std::string::npos; i = lf.find("\r\n", i))
    lf.erase(i, 1);
  const std::string arquivoLf = diretorio.Arquivo("lf.txt");
  GravaBytes(arquivoLf, lf);
  const nlohmann::json fimLf = Objeto(Executa({"notas", arquivoLf, "-d", Trabalho(), "--json"}));
  EXPECT_EQ(fimLf["diagnostico"]["tipo"], "fim_de_linha_lf");
  EXPECT_EQ(fimLf["diagnostico"]["mensagem"],
            "as linhas terminam só com LF, e cada linha de notas deve terminar com CR LF (162 "
            "bytes por linha); converta os fins de linha com: sed 's/$/\\r/' '" +
                arquivoLf + "' > '" + diretorio.Arquivo("lf-crlf.txt") + "'");

  const std::string fichas = Amostra("fichas-limpo.txt");
  const Execucao outroTipo = Executa({"notas", fichas, "-d", Trabalho(), "-q", inscricao});
  EXPECT_EQ(outroTipo.codigo, 1);
  EXPECT_EQ(outroTipo.erros,
            "quorvvalida: diagnóstico: a primeira linha tem 260 caracteres, como num arquivo de "
            "ficha cadastral; valide-o com: quorvvalida fichas '" +
                fichas + "'\n");
  // A good file gets no diagnosis.
  const nlohmann::json bom2 = Objeto(
      Executa({"notas", Amostra("notas-com-defeitos.txt"), "-d", Trabalho(), inscricao, "--json"}));
  EXPECT_FALSE(bom2.contains("diagnostico"));
}

TEST_F(Programa, CaminhoComBrancosEAcentos) {
  const std::string pasta = diretorio.Arquivo("remessas de março");
  fs::create_directories(fs::u8path(pasta));
  const std::string arquivo = pasta + "/notas com defeitos.txt";
  GravaBytes(arquivo, LeBytes(Amostra("notas-com-defeitos.txt")));
  const Execucao execucao = Executa({arquivo, "-d", pasta, inscricao, "-q"});
  EXPECT_EQ(execucao.codigo, 1);
  EXPECT_TRUE(fs::exists(fs::u8path(pasta + "/ADVERTENCIAS.TXT")));
}

TEST_F(Programa, SaidaPadraoCheiaEFalhaDeSaida) {
  const Execucao execucao =
      Shell("sh -c " +
            Aspas(Aspas(QUORV_PROGRAMA) + " notas " + Aspas(Amostra("notas-com-defeitos.txt")) +
                  " -d " + Aspas(Trabalho()) + " " + Aspas(inscricao) + " --json > /dev/full"));
  EXPECT_EQ(execucao.codigo, 3);
  EXPECT_EQ(execucao.erros,
            "quorvvalida: falha ao escrever na saída padrão (disco cheio ou saída fechada); o "
            "resultado mostrado está incompleto\n");
}

}  // namespace
}  // namespace quorv::teste
