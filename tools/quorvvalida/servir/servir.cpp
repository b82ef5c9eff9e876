#include "servir.hpp"

#include <pthread.h>
#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <system_error>
#include <thread>

#include <fmt/core.h>
#include <CLI/CLI.hpp>

#include "configuracao.hpp"
#include "quorvvalida/quorvvalida.hpp"
#include "servidor.hpp"

namespace quorv::servico {
namespace {

constexpr int kErro = 2;

void Erro(const std::string& mensagem) {
  std::fputs(fmt::format("quorvvalida servir: {}\n", mensagem).c_str(), stderr);
}

// The browser page installed beside the program: PREFIX/share/quorvvalida/web for
// PREFIX/bin/quorvvalida.
std::string PaginaPadrao() {
  std::error_code erro;
  const std::filesystem::path programa = std::filesystem::read_symlink("/proc/self/exe", erro);
  if (erro) return {};
  return (programa.parent_path().parent_path() / "share" / "quorvvalida" / "web").string();
}

// SIGTERM and SIGINT are taken by a thread of their own, which stops the server; every other
// thread has them blocked, so they never interrupt a validation.
sigset_t SinaisDeParada() {
  sigset_t sinais;
  sigemptyset(&sinais);
  sigaddset(&sinais, SIGTERM);
  sigaddset(&sinais, SIGINT);
  return sinais;
}

}  // namespace

int Servir(int argc, char** argv) {
  Configuracao configuracao;
  CLI::App app(
      "Serviço HTTP de validação: recebe arquivos de notas fiscais de produtor e de ficha "
      "cadastral e responde com as advertências em JSON (ou o próprio ADVERTENCIAS.TXT).",
      "quorvvalida servir");
  app.option_defaults()->group("Opções");
  app.set_help_flag("-h,--help", "mostra esta ajuda");
  app.get_formatter()->label("Usage", "Uso");
  app.get_formatter()->label("OPTIONS", "OPÇÕES");
  app.get_formatter()->column_width(32);
  app.add_option("--endereco", configuracao.endereco, "endereço em que escuta (padrão 127.0.0.1)")
      ->type_name("IP");
  app.add_option("--porta", configuracao.porta,
                 "porta (padrão 8080); 0 escolhe uma livre e a imprime como primeira linha")
      ->type_name("PORTA")
      ->check(CLI::Range(0, 65535).description(""));
  app.add_option("--trabalhadores", configuracao.trabalhadores,
                 "validações simultâneas (padrão: uma por processador)")
      ->type_name("N")
      ->check(CLI::PositiveNumber.description(""));
  app.add_option("--fila", configuracao.fila,
                 "requisições admitidas além dos trabalhadores antes de responder 503 (padrão: "
                 "quatro por trabalhador)")
      ->type_name("N");
  app.add_option("--limite-corpo", configuracao.limiteCorpo,
                 "tamanho máximo do arquivo enviado (padrão 512MiB); aceita KiB, MiB, GiB")
      ->type_name("BYTES")
      ->transform(CLI::AsSizeValue(true).description(""));
  app.add_option("--tempo-leitura", configuracao.tempoLeitura,
                 "segundos para o corpo chegar, mais 1 s a cada --taxa-minima bytes (padrão 20)")
      ->type_name("SEG")
      ->check(CLI::PositiveNumber.description(""));
  app.add_option("--tempo-escrita", configuracao.tempoEscrita,
                 "o mesmo para a resposta ser lida pelo cliente (padrão 20)")
      ->type_name("SEG")
      ->check(CLI::PositiveNumber.description(""));
  app.add_option("--taxa-minima", configuracao.taxaMinima,
                 "bytes por segundo que o cliente deve manter (padrão 64KiB)")
      ->type_name("BYTES")
      ->transform(CLI::AsSizeValue(true).description(""))
      ->check(CLI::PositiveNumber.description(""));
  app.add_option("--diretorio-temporario", configuracao.diretorioTemporario,
                 "onde cada requisição ganha um diretório privado (padrão: TMPDIR ou /tmp)")
      ->type_name("DIR");
  app.add_option("--pagina", configuracao.pagina,
                 "diretório da página do navegador servida em / (padrão: "
                 "share/quorvvalida/web ao lado do programa instalado)")
      ->type_name("DIR");
  app.add_option("--token-arquivo", configuracao.tokenArquivo,
                 "arquivo com o token que toda chamada à API deve trazer em Authorization: "
                 "Bearer")
      ->type_name("ARQUIVO");
  app.add_option("--inscricao-lib", configuracao.inscricaoLib,
                 "carrega a biblioteca de inscrição estadual deste arquivo")
      ->type_name("CAMINHO");
  app.add_flag("--sem-verificar-inscricao", configuracao.semVerificarInscricao,
               "aceita toda inscrição estadual sem consultar a biblioteca");
  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp&) {
    std::fputs(app.help().c_str(), stdout);
    return 0;
  } catch (const CLI::ParseError& erro) {
    Erro(erro.what());
    std::fputs("Use 'quorvvalida servir --help' para ver as opções.\n", stderr);
    return kErro;
  }

  if (configuracao.trabalhadores == 0) {
    configuracao.trabalhadores = std::max(1u, std::thread::hardware_concurrency());
  }
  if (!app.count("--fila")) configuracao.fila = 4 * configuracao.trabalhadores;
  if (!app.count("--pagina")) configuracao.pagina = PaginaPadrao();
  if (configuracao.diretorioTemporario.empty()) {
    configuracao.diretorioTemporario = BaseTemporariaPadrao();
  }
  std::optional<Autorizacao> autorizacao;
  if (!configuracao.tokenArquivo.empty()) {
    std::string erro;
    autorizacao = Autorizacao::DoArquivo(configuracao.tokenArquivo, erro);
    if (!autorizacao) {
      Erro(erro);
      return kErro;
    }
  }
  if (!configuracao.inscricaoLib.empty() &&
      !CarregarBibliotecaInscricao(configuracao.inscricaoLib)) {
    Erro("não foi possível carregar a biblioteca de inscrição estadual " +
         configuracao.inscricaoLib);
    return kErro;
  }
  if (configuracao.semVerificarInscricao) {
    DefinirVerificadorInscricao(
        [](const std::string&, const std::string&) { return static_cast<int16_t>(0); });
  } else if (!VerificadorInscricaoDisponivel()) {
    Erro(
        "aviso: a biblioteca de inscrição estadual (libDllInscE32.so) não foi encontrada; toda "
        "inscrição estadual de QZ será recusada. Informe-a com --inscricao-lib CAMINHO ou "
        "LD_LIBRARY_PATH.");
  }

  std::string erro;
  std::unique_ptr<DiretorioTemporario> base =
      DiretorioTemporario::Cria(configuracao.diretorioTemporario, "quorvvalida-servir.", erro);
  if (!base) {
    Erro(erro);
    return kErro;
  }

  // Blocked before any thread starts, so that every thread the server makes inherits it.
  const sigset_t sinais = SinaisDeParada();
  pthread_sigmask(SIG_BLOCK, &sinais, nullptr);
  signal(SIGPIPE, SIG_IGN);

  Servidor servidor(configuracao, std::move(autorizacao), std::move(base));
  const int porta = servidor.Liga(erro);
  if (porta < 0) {
    Erro(erro);
    return kErro;
  }
  std::printf("%d\n", porta);
  std::fflush(stdout);
  Erro(fmt::format("escutando em http://{}:{} ({} trabalhador(es), fila de {}, limite de {} bytes)",
                   configuracao.endereco, porta, configuracao.trabalhadores, configuracao.fila,
                   configuracao.limiteCorpo));

  std::atomic<bool> atendendo{true};
  std::thread vigia([&servidor, &atendendo, sinais] {
    int sinal = 0;
    sigwait(&sinais, &sinal);
    if (!atendendo) return;
    Erro(fmt::format("{} recebido: não aceita novas conexões e conclui as validações em andamento",
                     sinal == SIGINT ? "SIGINT" : "SIGTERM"));
    servidor.Para();
  });
  const bool atendeu = servidor.Atende();
  // The server can also stop by itself; the watcher is then woken by a signal of our own.
  atendendo = false;
  kill(getpid(), SIGTERM);
  vigia.join();
  Erro("encerrado");
  return atendeu ? 0 : kErro;
}

}  // namespace quorv::servico
