// The answers of the routes: a file received and validated by the tool's own commands, the
// catalogues, the service's health, metrics and OpenAPI document.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <iterator>

#include <fmt/core.h>
#include <nlohmann/json.hpp>

#include "advertencias_arquivo.hpp"
#include "codigos_saida.hpp"
#include "comandos.hpp"
#include "documentos.hpp"
#include "execucao.hpp"
#include "json_v1.hpp"
#include "problemas.hpp"
#include "servidor.hpp"
#include "tipo_arquivo.hpp"
#include "valores.hpp"

namespace quorv::servico {
namespace {

using httplib::Request;
using httplib::Response;
using Clock = std::chrono::steady_clock;

// Inside a request's directory: the file received, the web facade's return file and its
// object. The answers name the file as the tool run in that directory names it.
constexpr const char* kArquivo = "remessa.txt";
constexpr const char* kRetorno = "RETORNO.TXT";
constexpr const char* kObjetoWeb = "web.json";

constexpr const char* kTextoWindows1252 = "text/plain; charset=windows-1252";
// JSON answers are not compressed by the service: the HTTP library compresses answers labelled
// exactly application/json, and with brotli at its slowest setting, which takes minutes over a
// large answer. A reverse proxy in front compresses them (see the README).
constexpr const char* kJson = "application/json; charset=utf-8";

// A failure of the library that is the server's (its disk, its memory), not the file's: it is
// answered as an error of the service, with the kind the tool gives it.
int StatusDaFalha(const std::string& tipo) {
  const bool disco = tipo == "advertencias_nao_criadas" || tipo == "escrita_advertencias" ||
                     tipo == "retorno_nao_criado" || tipo == "escrita_retorno";
  return disco ? 507 : 500;
}

ferramenta::OpcoesGerais GeraisDe(const Parametros& parametros) {
  ferramenta::OpcoesGerais gerais;
  gerais.json = true;
  gerais.quieto = true;
  gerais.hoje = parametros.hoje;
  return gerais;
}

// A catalogue's answer as the tool's JSON object, one line.
std::string ObjetoMensagem(const ferramenta::ResultadoMensagem& resultado) {
  std::string objeto;
  ferramenta::json_v1::Escritor escritor([&objeto](std::string_view bytes) {
    objeto.append(bytes);
    return true;
  });
  ferramenta::json_v1::EscreveMensagem(escritor, resultado);
  return objeto;
}

}  // namespace

void Servidor::Recebe(const Rota& rota, const Request& req, Response& res,
                      const httplib::ContentReader& leitor) {
  std::optional<Admissao::Vaga> vaga = admissao_.Reserva();
  if (!vaga) {
    RespondeOcupado(res);
    return;
  }
  std::string erro;
  std::shared_ptr<DiretorioTemporario> diretorio =
      DiretorioTemporario::Cria(base_->Caminho(), "req.", erro);
  if (!diretorio) {
    RespondeProblema(res, 500, "interno", "não foi possível preparar o diretório da validação",
                     true);
    return;
  }
  Recepcao recepcao(
      diretorio->Arquivo(kArquivo),
      {configuracao_.limiteCorpo, configuracao_.tempoLeitura, configuracao_.taxaMinima});
  if (!recepcao.Aberta()) {
    RespondeProblema(res, 500, "interno", "não foi possível gravar o arquivo recebido", true);
    return;
  }
  const bool formulario = req.is_multipart_form_data();
  const auto recebe = [&recepcao](const char* dados, std::size_t tamanho) {
    return recepcao.Recebe(dados, tamanho);
  };
  const bool lido = formulario ? leitor(
                                     [&recepcao](const httplib::MultipartFormData& campo) {
                                       return recepcao.Campo(campo.name);
                                     },
                                     recebe)
                               : leitor(recebe);
  const bool gravado = recepcao.Conclui();
  if (Contexto* contexto = ContextoDe(req)) contexto->recebidos = recepcao.Bytes();
  if (!lido || !gravado) {
    switch (recepcao.Motivo()) {
      case Recepcao::Falha::kGrande:
        RespondeProblema(res, 413, "corpo_grande",
                         fmt::format("o arquivo passou do limite deste serviço, {} bytes",
                                     configuracao_.limiteCorpo),
                         true);
        break;
      case Recepcao::Falha::kLenta:
        RespondeProblema(res, 408, "tempo_esgotado", "o corpo chegou devagar demais", true);
        break;
      case Recepcao::Falha::kEscrita:
        RespondeProblema(res, 507, "escrita_arquivo_recebido",
                         "o arquivo recebido não pôde ser gravado no disco do serviço", true);
        break;
      case Recepcao::Falha::kCampo:
        RespondeProblema(res, 400, "formulario_invalido",
                         "o formulário deve ter um só campo, arquivo, com o arquivo a validar",
                         true);
        break;
      case Recepcao::Falha::kNenhuma:
        if (recepcao.SegundosParado() >= configuracao_.tempoLeitura * 0.9) {
          RespondeProblema(
              res, 408, "tempo_esgotado",
              fmt::format("nenhum byte do corpo chegou em {} s", configuracao_.tempoLeitura), true);
        } else if (formulario) {
          RespondeProblema(res, 400, "formulario_invalido",
                           "o corpo não é um formulário multipart/form-data bem formado", true);
        } else {
          RespondeProblema(res, 400, "requisicao_invalida", "o corpo chegou incompleto", true);
        }
        break;
    }
    return;
  }
  if (formulario && !recepcao.RecebeuCampo()) {
    RespondeProblema(res, 400, "formulario_invalido",
                     "falta o campo arquivo, com o arquivo a validar", false);
    return;
  }
  if (!EntraNoDiretorio(diretorio->Caminho())) {
    RespondeProblema(res, 500, "interno", "não foi possível entrar no diretório da validação",
                     false);
    return;
  }
  const bool web = rota.destino == Destino::kWebNotas || rota.destino == Destino::kWebFichas ||
                   rota.destino == Destino::kWebTipo;
  if (web) {
    ValidaWeb(rota, req, res, diretorio, vaga, recepcao);
  } else {
    Valida(rota, req, res, diretorio, vaga, recepcao);
  }
}

void Servidor::Valida(const Rota& rota, const Request& req, Response& res,
                      const std::shared_ptr<DiretorioTemporario>& diretorio,
                      std::optional<Admissao::Vaga>& vaga, const Recepcao& recepcao) {
  Parametros parametros;
  LeParametros(req.params, rota.destino, parametros);
  ferramenta::Tipo tipo =
      rota.destino == Destino::kFichas ? ferramenta::Tipo::kFichas : ferramenta::Tipo::kNotas;
  if (rota.destino == Destino::kAuto) {
    const ferramenta::Identificacao identificacao = ferramenta::IdentificaTipo(kArquivo);
    if (!identificacao.identificado) {
      RespondeProblema(
          res, 422, "tipo_nao_identificado",
          fmt::format("não foi possível identificar o tipo do arquivo: a primeira linha tem {} "
                      "caracteres, e são esperados 160 (notas fiscais de produtor) ou 260 (ficha "
                      "cadastral); use /v1/notas ou /v1/fichas para escolher",
                      identificacao.comprimento),
          false);
      return;
    }
    tipo = identificacao.tipo;
  }
  ferramenta::OpcoesValidacao opcoes;
  opcoes.diretorio = ".";
  opcoes.chaveRemessa = parametros.chaveRemessa;
  opcoes.chaveProcessamento = parametros.chaveProcessamento;
  opcoes.origem = parametros.origem;
  opcoes.servidor = parametros.servidor;
  opcoes.separador = parametros.separador;

  vaga->AguardaTrabalhador();
  const ferramenta::ResultadoValidacao resultado = ferramenta::ValidaUm(
      kArquivo, kArquivo, tipo, opcoes.diretorio, opcoes, GeraisDe(parametros), {});
  const std::uint64_t advertencias = resultado.caminhoAdvertencias.empty()
                                         ? 0
                                         : ferramenta::ContaLinhas(resultado.caminhoAdvertencias);
  vaga.reset();
  metricas_.Validacao(ferramenta::NomeDoTipo(tipo), recepcao.Bytes(), recepcao.Linhas(),
                      static_cast<std::int64_t>(advertencias));
  if (resultado.erro && resultado.erro->tipo != "erro_grave") {
    RespondeProblema(res, StatusDaFalha(resultado.erro->tipo), resultado.erro->tipo,
                     resultado.erro->mensagem, false);
    return;
  }
  res.set_header("X-Quorv-Tipo", ferramenta::NomeDoTipo(tipo));
  res.set_header("X-Quorv-Status", std::to_string(resultado.status));
  res.set_header("X-Quorv-Numero-Remessa", ParaCabecalho(resultado.numeroRemessa));
  res.set_header("X-Quorv-Advertencias", std::to_string(advertencias));
  res.set_header("X-Quorv-Codigo-Saida", std::to_string(resultado.codigoSaida));
  if (NegociaFormato(req.get_header_value("Accept")) == Formato::kTexto) {
    EnviaArquivo(req, res, diretorio, resultado.caminhoAdvertencias, kTextoWindows1252);
    return;
  }
  // The object is written as it is sent: its warnings are read from their file a block at a
  // time, however many there are.
  const std::shared_ptr<std::uint64_t> enviados = ContadorDeEnvio(req);
  const auto inicio = Clock::now();
  res.set_chunked_content_provider(
      kJson, [this, resultado, diretorio, enviados, inicio](std::size_t, httplib::DataSink& sink) {
        ferramenta::json_v1::Escritor escritor([&](std::string_view bytes) {
          if (!EnvioNoPrazo(inicio, *enviados) || !sink.write(bytes.data(), bytes.size())) {
            return false;
          }
          *enviados += bytes.size();
          return true;
        });
        if (!ferramenta::json_v1::EscreveValidacao(escritor, resultado)) return false;
        sink.done();
        // While the service stops, the connection ends with this answer.
        return !encerrando_;
      });
}

void Servidor::ValidaWeb(const Rota& rota, const Request& req, Response& res,
                         const std::shared_ptr<DiretorioTemporario>& diretorio,
                         std::optional<Admissao::Vaga>& vaga, const Recepcao& recepcao) {
  Parametros parametros;
  LeParametros(req.params, rota.destino, parametros);
  const bool texto = NegociaFormato(req.get_header_value("Accept")) == Formato::kTexto;
  ferramenta::OpcoesWeb opcoes;
  opcoes.arquivo = kArquivo;
  opcoes.retorno = kRetorno;
  opcoes.diretorio = ".";
  opcoes.tipo = rota.destino == Destino::kWebNotas    ? std::string("P")
                : rota.destino == Destino::kWebFichas ? std::string("F")
                                                      : req.matches[1].str();
  opcoes.tipoArquivo = parametros.tipoArquivo;
  opcoes.programaChamador = parametros.programaChamador;
  opcoes.incluiTextoRetorno = !texto;

  // The facade's object goes to a file of the request's directory: with the return file's text
  // in it, it may be large.
  std::FILE* objeto = std::fopen(kObjetoWeb, "wb");
  if (objeto == nullptr) {
    RespondeProblema(res, 507, "escrita_arquivo_recebido",
                     "não foi possível gravar o resultado da fachada web", false);
    return;
  }
  ferramenta::Relator relator(GeraisDe(parametros), [objeto](std::string_view bytes) {
    return std::fwrite(bytes.data(), 1, bytes.size(), objeto) == bytes.size();
  });
  vaga->AguardaTrabalhador();
  ferramenta::ResultadoWeb resultado;
  const int codigo = ferramenta::ValidaWeb(opcoes, relator, &resultado);
  vaga.reset();
  const bool descarregado = relator.Escritor().Descarrega();
  const bool gravado = std::fclose(objeto) == 0 && descarregado;
  if (*opcoes.tipo == "P" || *opcoes.tipo == "F") {
    metricas_.Validacao(*opcoes.tipo == "P" ? "notas" : "fichas", recepcao.Bytes(),
                        recepcao.Linhas(), -1);
  }
  if (!gravado) {
    RespondeProblema(res, 507, "escrita_arquivo_recebido",
                     "não foi possível gravar o resultado da fachada web", false);
    return;
  }
  if (codigo != ferramenta::kAceito && codigo != ferramenta::kComAdvertencias) {
    const std::string tipo = resultado.erro ? resultado.erro->tipo : "interno";
    // A run that the file itself stopped is the facade's result, not a failure of the service.
    if (tipo != "erro_grave") {
      RespondeProblema(res, StatusDaFalha(tipo), tipo,
                       resultado.erro ? resultado.erro->mensagem : "a fachada web falhou", false);
      return;
    }
  }
  if (!texto) {
    EnviaArquivo(req, res, diretorio, kObjetoWeb, kJson);
    return;
  }
  // Without the return file's text the object's fields go in the headers.
  res.set_header("X-Quorv-Tipo",
                 resultado.tipo ? ferramenta::NomeDoTipo(*resultado.tipo) : "nenhum");
  res.set_header("X-Quorv-Resultado", resultado.resultado ? "true" : "false");
  res.set_header("X-Quorv-Numero-Remessa", ParaCabecalho(resultado.numeroRemessa));
  res.set_header("X-Quorv-Codigo-Saida", std::to_string(codigo));
  EnviaArquivo(req, res, diretorio, resultado.arquivoRetorno, kTextoWindows1252);
}

void Servidor::EnviaArquivo(const Request& req, Response& res,
                            const std::shared_ptr<DiretorioTemporario>& diretorio,
                            const std::string& caminho, const std::string& tipoDeConteudo) {
  struct Aberto {
    int descritor = -1;
    std::shared_ptr<DiretorioTemporario> diretorio;
    ~Aberto() {
      if (descritor >= 0) ::close(descritor);
    }
  };
  auto aberto = std::make_shared<Aberto>();
  aberto->diretorio = diretorio;
  if (!caminho.empty()) aberto->descritor = ::open(caminho.c_str(), O_RDONLY | O_CLOEXEC);
  struct stat dados {};
  if (aberto->descritor < 0 || ::fstat(aberto->descritor, &dados) != 0 || dados.st_size == 0) {
    res.set_content("", tipoDeConteudo);
    return;
  }
  const std::shared_ptr<std::uint64_t> enviados = ContadorDeEnvio(req);
  const auto inicio = Clock::now();
  const auto total = static_cast<std::size_t>(dados.st_size);
  res.set_content_provider(
      total, tipoDeConteudo,
      [this, aberto, enviados, inicio, total](std::size_t desde, std::size_t tamanho,
                                              httplib::DataSink& sink) {
        if (!EnvioNoPrazo(inicio, *enviados)) return false;
        char bloco[64 * 1024];
        const ssize_t lidos = ::pread(aberto->descritor, bloco, std::min(tamanho, sizeof bloco),
                                      static_cast<off_t>(desde));
        if (lidos <= 0 || !sink.write(bloco, static_cast<std::size_t>(lidos))) return false;
        *enviados += static_cast<std::uint64_t>(lidos);
        // While the service stops, the connection ends with this answer (failing after the
        // last byte is how the library is told to close).
        return !(encerrando_ && desde + static_cast<std::size_t>(lidos) == total);
      });
}

void Servidor::RespondeOcupado(Response& res) const {
  res.set_header("Retry-After", std::to_string(admissao_.SegundosParaTentarDeNovo()));
  RespondeProblema(res, 503, "servico_ocupado",
                   "todas as validações e a fila estão ocupadas; tente de novo mais tarde", true);
}

void Servidor::PreparaCatalogos() {
  for (const ferramenta::Tipo tipo : {ferramenta::Tipo::kNotas, ferramenta::Tipo::kFichas}) {
    std::string& json = tipo == ferramenta::Tipo::kNotas ? catalogoNotas_ : catalogoFichas_;
    std::string& texto =
        tipo == ferramenta::Tipo::kNotas ? catalogoNotasTexto_ : catalogoFichasTexto_;
    json = "[";
    for (int codigo = INT16_MIN; codigo <= INT16_MAX; ++codigo) {
      const ferramenta::ResultadoMensagem resultado = ferramenta::BuscaMensagem(tipo, codigo);
      if (!resultado.conhecido) continue;
      if (json.size() > 1) json += ",";
      json += ObjetoMensagem(resultado);
      texto += fmt::format("{}\t{}\n", codigo, resultado.mensagem);
    }
    json += "]\n";
  }
}

void Servidor::Consulta(const Rota& rota, const Request& req, Response& res) {
  const bool texto = NegociaFormato(req.get_header_value("Accept")) == Formato::kTexto;
  switch (rota.destino) {
    case Destino::kMensagemNotas:
    case Destino::kMensagemFichas: {
      const std::string escrito = req.matches[1].str();
      const std::optional<int> codigo = ferramenta::LeCodigo(escrito);
      if (!codigo) {
        RespondeProblema(res, 400, "uso", ferramenta::CodigoInvalido(ParaRegistro(escrito)), false);
        return;
      }
      const ferramenta::ResultadoMensagem resultado = ferramenta::BuscaMensagem(
          rota.destino == Destino::kMensagemNotas ? ferramenta::Tipo::kNotas
                                                  : ferramenta::Tipo::kFichas,
          *codigo);
      if (texto) {
        res.set_content(resultado.mensagem + "\n", "text/plain; charset=utf-8");
      } else {
        res.set_content(ObjetoMensagem(resultado), kJson);
      }
      return;
    }
    case Destino::kCatalogoNotas:
    case Destino::kCatalogoFichas: {
      const bool notas = rota.destino == Destino::kCatalogoNotas;
      if (texto) {
        res.set_content(notas ? catalogoNotasTexto_ : catalogoFichasTexto_,
                        "text/plain; charset=utf-8");
      } else {
        res.set_content(notas ? catalogoNotas_ : catalogoFichas_, kJson);
      }
      return;
    }
    case Destino::kSaude: {
      const Admissao::Estado estado = admissao_.Consulta();
      const bool pronto = !encerrando_ && estado.admitidas < estado.trabalhadores + estado.fila;
      const nlohmann::json corpo = {
          {"status", encerrando_ ? "encerrando"
                     : pronto    ? "pronto"
                                 : "ocupado"},
          {"pronto", pronto},
          {"trabalhadores", estado.trabalhadores},
          {"fila", estado.fila},
          {"validando", estado.validando},
          {"aguardando", estado.aguardando},
          {"admitidas", estado.admitidas},
      };
      res.status = pronto ? 200 : 503;
      if (!pronto) {
        res.set_header("Retry-After", std::to_string(admissao_.SegundosParaTentarDeNovo()));
      }
      res.set_content(corpo.dump() + "\n", kJson);
      return;
    }
    case Destino::kMetricas:
      res.set_content(metricas_.Texto(admissao_.Consulta()),
                      "text/plain; version=0.0.4; charset=utf-8");
      return;
    case Destino::kOpenApi: {
      const std::string_view documento = DescricaoOpenApi();
      res.set_content(documento.data(), documento.size(), kJson);
      return;
    }
    case Destino::kEsquema: {
      const std::string nome = req.matches[1].str();
      const std::optional<std::string_view> esquema = Esquema(nome);
      if (!esquema) {
        RespondeProblema(res, 404, "rota_desconhecida",
                         "não há esquema chamado " + ParaRegistro(nome), false);
        return;
      }
      res.set_content(esquema->data(), esquema->size(), kJson);
      return;
    }
    default:
      RespondeProblema(res, 500, "interno", "rota sem resposta", false);
      return;
  }
}

}  // namespace quorv::servico
