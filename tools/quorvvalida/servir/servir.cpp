#include "servir.hpp"

#include <pthread.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cctype>
#include <charconv>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <system_error>
#include <thread>

#include <fmt/core.h>
#include <CLI/CLI.hpp>

#include "argumentos.hpp"
#include "codigos_saida.hpp"
#include "comandos.hpp"
#include "configuracao.hpp"
#include "execucao.hpp"
#include "quorvvalida/quorvvalida.hpp"
#include "servidor.hpp"

namespace quorv::servico {
namespace {

using ferramenta::kErroInterno;
using ferramenta::kFalhaEntradaSaida;
using ferramenta::kUsoIncorreto;

constexpr const char* kUso =
    "Uso: quorvvalida servir [--endereco IP] [--porta P] [--trabalhadores N] [--fila N]\n"
    "                        [--limite-corpo BYTES] [--token-arquivo ARQUIVO] [opções]";

void Erro(const std::string& mensagem) {
  std::fputs(fmt::format("quorvvalida servir: {}\n", mensagem).c_str(), stderr);
}

// A size in bytes: digits and an optional unit, B, KB, MB, GB (powers of 1000) or KiB, MiB,
// GiB (powers of 1024), in any case.
std::optional<std::uint64_t> LeTamanho(const std::string& texto) {
  std::uint64_t numero = 0;
  const auto [fim, erro] = std::from_chars(texto.data(), texto.data() + texto.size(), numero);
  if (erro != std::errc() || fim == texto.data()) return std::nullopt;
  std::string unidade(fim, texto.data() + texto.size());
  std::transform(unidade.begin(), unidade.end(), unidade.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  constexpr std::pair<const char*, std::uint64_t> kUnidades[] = {{"", 1},
                                                                 {"b", 1},
                                                                 {"kb", 1000},
                                                                 {"mb", 1000 * 1000},
                                                                 {"gb", 1000 * 1000 * 1000},
                                                                 {"kib", 1024},
                                                                 {"mib", 1024 * 1024},
                                                                 {"gib", 1024 * 1024 * 1024}};
  for (const auto& [nome, fator] : kUnidades) {
    if (unidade != nome) continue;
    if (numero > UINT64_MAX / fator) return std::nullopt;
    return numero * fator;
  }
  return std::nullopt;
}

CLI::Validator ValidadorTamanho() {
  return CLI::Validator(
      [](std::string& texto) -> std::string {
        const std::optional<std::uint64_t> tamanho = LeTamanho(texto);
        if (tamanho && *tamanho > 0) return {};
        return fmt::format(
            "tamanho inválido '{}'; use um número de bytes maior que zero, com KiB, MiB ou GiB "
            "se quiser, como 512MiB",
            texto);
      },
      "BYTES");
}

CLI::Validator ValidadorSegundos() {
  return CLI::Validator(
      [](std::string& texto) -> std::string {
        double segundos = 0;
        const auto [fim, erro] =
            std::from_chars(texto.data(), texto.data() + texto.size(), segundos);
        if (erro == std::errc() && fim == texto.data() + texto.size() && std::isfinite(segundos) &&
            segundos > 0 && segundos <= 86400) {
          return {};
        }
        return fmt::format("tempo inválido '{}'; use segundos, de 0,001 a 86400, como 20 ou 0.5",
                           texto);
      },
      "SEG");
}

// The browser page installed beside the program: PREFIX/share/quorvvalida/web for
// PREFIX/bin/quorvvalida.
std::string PaginaPadrao() {
  std::error_code erro;
  const std::filesystem::path programa = std::filesystem::read_symlink("/proc/self/exe", erro);
  if (erro) return {};
  return (programa.parent_path().parent_path() / "share" / "quorvvalida" / "web").string();
}

// Each request runs in a directory of its own from the thread that serves it, so every path
// the service keeps is made absolute first.
std::string Absoluto(const std::string& caminho) {
  std::error_code erro;
  const std::filesystem::path absoluto = std::filesystem::absolute(caminho, erro);
  return erro ? caminho : absoluto.lexically_normal().string();
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
  std::string limiteCorpo;
  std::string taxaMinima;
  std::string tempoLeitura;
  std::string tempoEscrita;
  std::string porta;
  std::string trabalhadores;
  std::string fila;
  const std::vector<std::string> palavras(argv + 1, argv + argc);
  CLI::App app(ferramenta::Quebra(
                   "Serviço HTTP de validação: recebe arquivos de notas fiscais de produtor e de "
                   "ficha cadastral e responde com os objetos JSON do programa (formato 1), com "
                   "todas as advertências e seus textos, ou com o próprio ADVERTENCIAS.TXT.",
                   ferramenta::FormatadorPortugues::kLargura),
               "quorvvalida servir");
  app.formatter(std::make_shared<ferramenta::FormatadorPortugues>(kUso));
  ferramenta::UsaMensagensEmPortugues(app, palavras);
  app.option_defaults()->group("Opções");
  app.set_help_flag("-h,--help", "mostra esta ajuda");
  app.add_option("--endereco", configuracao.endereco, "endereço em que escuta (padrão 127.0.0.1)")
      ->option_text("IP");
  app.add_option("--porta", porta,
                 "porta (padrão 8080); 0 escolhe uma livre, e a porta é sempre a primeira linha "
                 "da saída")
      ->check(ferramenta::ValidadorInteiro(0, 65535))
      ->option_text("P");
  app.add_option("--trabalhadores", trabalhadores,
                 "validações simultâneas (padrão: uma por processador)")
      ->check(ferramenta::ValidadorInteiro(1, 4096))
      ->option_text("N");
  app.add_option("--fila", fila,
                 "requisições admitidas além dos trabalhadores, recebendo o arquivo ou à espera; "
                 "além delas, 503 (padrão: quatro por trabalhador)")
      ->check(ferramenta::ValidadorInteiro(0, 65536))
      ->option_text("N");
  app.add_option("--limite-corpo", limiteCorpo,
                 "tamanho máximo do arquivo enviado (padrão 512MiB); acima dele, 413 sem ler o "
                 "corpo")
      ->check(ValidadorTamanho())
      ->option_text("BYTES");
  app.add_option("--tempo-leitura", tempoLeitura,
                 "segundos para o corpo chegar, mais 1 s a cada --taxa-minima bytes recebidos, e "
                 "espera máxima por um pedaço dele (padrão 20)")
      ->check(ValidadorSegundos())
      ->option_text("SEG");
  app.add_option("--tempo-escrita", tempoEscrita,
                 "o mesmo para a resposta ser lida pelo cliente (padrão 20)")
      ->check(ValidadorSegundos())
      ->option_text("SEG");
  app.add_option("--taxa-minima", taxaMinima,
                 "bytes por segundo que o cliente deve manter ao enviar e ao ler (padrão 64KiB)")
      ->check(ValidadorTamanho())
      ->option_text("BYTES");
  app.add_option("--diretorio-temporario", configuracao.diretorioTemporario,
                 "onde cada requisição ganha um diretório privado (padrão: TMPDIR ou /tmp)")
      ->option_text("DIR");
  app.add_option("--pagina", configuracao.pagina,
                 "diretório da página do navegador servida em / (padrão: share/quorvvalida/web "
                 "ao lado do programa instalado)")
      ->option_text("DIR");
  app.add_option("--token-arquivo", configuracao.tokenArquivo,
                 "arquivo com o token que toda chamada a /v1 e /metricas deve trazer em "
                 "Authorization: Bearer")
      ->option_text("ARQUIVO");
  app.add_option("--inscricao-lib", configuracao.inscricaoLib,
                 "carrega a biblioteca de inscrição estadual deste arquivo")
      ->option_text("CAMINHO");
  app.add_flag("--sem-verificar-inscricao", configuracao.semVerificarInscricao,
               "aceita toda inscrição estadual sem consultar a biblioteca");
  app.footer("\n" +
             ferramenta::Quebra(
                 "Rotas: POST /v1/notas, /v1/fichas, /v1/auto, /v1/web/notas, "
                 "/v1/web/fichas, /v1/web/tipo/P|F; GET /v1/mensagens/notas|fichas[/CODIGO], "
                 "/saude, /metricas, /openapi.json. SIGTERM ou SIGINT: para de aceitar "
                 "conexões, conclui as validações em andamento e sai com 0. Saída: 0 "
                 "encerrado, 2 uso incorreto, 3 porta, diretório temporário, token ou "
                 "biblioteca inutilizáveis, 4 erro interno.",
                 ferramenta::FormatadorPortugues::kLargura));
  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp&) {
    std::fputs(app.help().c_str(), stdout);
    return ferramenta::kAceito;
  } catch (const CLI::ParseError& erro) {
    Erro(ferramenta::MensagemDoErro(app, erro) + "; veja 'quorvvalida servir --help'");
    return kUsoIncorreto;
  }
  if (!porta.empty()) configuracao.porta = std::stoi(porta);
  if (!limiteCorpo.empty()) configuracao.limiteCorpo = *LeTamanho(limiteCorpo);
  if (!taxaMinima.empty()) configuracao.taxaMinima = *LeTamanho(taxaMinima);
  if (!tempoLeitura.empty()) configuracao.tempoLeitura = std::stod(tempoLeitura);
  if (!tempoEscrita.empty()) configuracao.tempoEscrita = std::stod(tempoEscrita);
  configuracao.trabalhadores = trabalhadores.empty()
                                   ? std::max(1u, std::thread::hardware_concurrency())
                                   : std::stoul(trabalhadores);
  configuracao.fila = fila.empty() ? 4 * configuracao.trabalhadores : std::stoul(fila);
  if (!app.count("--pagina")) configuracao.pagina = PaginaPadrao();
  if (!configuracao.pagina.empty()) configuracao.pagina = Absoluto(configuracao.pagina);
  if (configuracao.diretorioTemporario.empty()) {
    configuracao.diretorioTemporario = BaseTemporariaPadrao();
  }
  configuracao.diretorioTemporario = Absoluto(configuracao.diretorioTemporario);

  std::string erro;
  if (!DiretoriosPorFio(erro)) {
    Erro(erro);
    return kErroInterno;
  }
  std::optional<Autorizacao> autorizacao;
  if (!configuracao.tokenArquivo.empty()) {
    autorizacao = Autorizacao::DoArquivo(configuracao.tokenArquivo, erro);
    if (!autorizacao) {
      Erro(erro);
      return kFalhaEntradaSaida;
    }
  }
  if (!configuracao.inscricaoLib.empty() &&
      !CarregarBibliotecaInscricao(configuracao.inscricaoLib)) {
    Erro("não foi possível carregar a biblioteca de inscrição estadual: " +
         configuracao.inscricaoLib);
    return kFalhaEntradaSaida;
  }
  if (configuracao.semVerificarInscricao) {
    DefinirVerificadorInscricao(
        [](const std::string&, const std::string&) { return static_cast<int16_t>(0); });
  } else if (!VerificadorInscricaoDisponivel()) {
    Erro(ferramenta::kSemInscricao);
  }
  std::unique_ptr<DiretorioTemporario> base =
      DiretorioTemporario::Cria(configuracao.diretorioTemporario, "quorvvalida-servir.", erro);
  if (!base) {
    Erro(erro);
    return kFalhaEntradaSaida;
  }

  // Blocked before any thread starts, so that every thread the server makes inherits it.
  const sigset_t sinais = SinaisDeParada();
  pthread_sigmask(SIG_BLOCK, &sinais, nullptr);
  signal(SIGPIPE, SIG_IGN);

  Servidor servidor(configuracao, autorizacao, std::move(base));
  const int portaEscutada = servidor.Liga(erro);
  if (portaEscutada < 0) {
    Erro(erro);
    return kFalhaEntradaSaida;
  }
  std::printf("%d\n", portaEscutada);
  std::fflush(stdout);
  Erro(
      fmt::format("escutando em http://{}:{} ({} trabalhador(es), fila de {}, limite de {} "
                  "bytes)",
                  configuracao.endereco, portaEscutada, configuracao.trabalhadores,
                  configuracao.fila, configuracao.limiteCorpo));

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
  return atendeu ? ferramenta::kAceito : kFalhaEntradaSaida;
}

}  // namespace quorv::servico
