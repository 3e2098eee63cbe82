#include "cli/media/ffprobe.h"

#include "cli/support/child_process.h"
#include "cli/support/errors.h"

namespace cli {
namespace {

// What it says of itself is about its options; people asked about a file.
std::string inOtherWords(const std::string& complaint) {
  if (complaint.starts_with("Format not on whitelist")) {
    return "it is a list of other files, or of a kind that is not read";
  }
  const std::size_t size = complaint.find("Picture size ");
  if (size == complaint.npos) return complaint;
  const std::size_t start = size + std::string("Picture size ").size();
  const bool isLimited = complaint.find("exceeds", start) != complaint.npos;
  return "its pictures of " + complaint.substr(start, complaint.find(' ', start) - start) +
         (isLimited ? " take more than --limit-memory allows" : " are too large for ffmpeg");
}

constexpr char kClipsAndSound[] =
    "3dostr,4xm,amv,anm,apng,argo_brp,asf,asf_o,av1,avi,avs,avs2,avs3,bethsoftvid,bfi,bink,bmv,"
    "c93,cavsvideo,cdg,cdxl,cine,dfa,dhav,dirac,dnxhd,dsicin,dv,dxa,ea,evc,film_cpk,filmstrip,"
    "flic,flv,frm,gdv,gif,gxf,h261,h263,h264,hevc,hnm,idcin,iff,ifv,ingenient,ipmovie,ipu,iv8,"
    "ivf,ivr,jpegxl_anim,jv,kux,live_flv,lmlm4,luodat,lvf,lxf,m4v,matroska,mgsts,mjpeg,"
    "mjpeg_2000,mm,mods,moflex,mov,mpeg,mpegts,mpegvideo,mtv,mv,mvi,mxf,mxg,nc,nsv,nut,nuv,"
    "obu,ogg,paf,pmp,psxstr,pva,qcp,r3d,rl2,rm,roq,rpl,sdr2,ser,sga,simbiosis_imx,siff,smjpeg,"
    "smk,smush,swf,thp,tiertexseq,tmv,ty,v210,v210x,vc1,vc1test,vividas,vivo,vmd,vvc,wc3movie,"
    "wsvqa,wtv,xmv,yop,yuv4mpegpipe,"
    "aac,ac3,adx,aiff,amr,amrnb,amrwb,ape,apm,aptx,aptx_hd,au,caf,codec2,daud,dff,dsf,dts,dtshd,"
    "eac3,flac,g722,gsm,iamf,ilbc,ircam,loas,mlp,mmf,mp3,mpc,mpc8,musx,nistsphere,oma,osq,pvf,"
    "rso,sbc,shn,sox,spdif,tak,truehd,tta,voc,vqf,w64,wav,wsd,wv,xa,xwma";

}  // namespace

const char* const kStillFormats =
    "alias_pix,bmp_pipe,brender_pix,cri_pipe,dds_pipe,dpx_pipe,exr_pipe,fits,gem_pipe,gif_pipe,"
    "hdr_pipe,ico,image2,j2k_pipe,jpeg_pipe,jpegls_pipe,jpegxl_pipe,pam_pipe,pbm_pipe,pcx_pipe,"
    "pfm_pipe,pgm_pipe,pgmyuv_pipe,pgx_pipe,phm_pipe,photocd_pipe,pictor_pipe,png_pipe,ppm_pipe,"
    "psd_pipe,qdraw_pipe,qoi_pipe,sgi_pipe,sunrast_pipe,svg_pipe,tiff_pipe,txd,vbn_pipe,"
    "wbmp_pipe,webp_pipe,xbm_pipe,xpm_pipe,xwd_pipe";

std::string selfContainedFormats() {
  return std::string(kClipsAndSound) + "," + kStillFormats;
}

std::vector<std::string> openingOptions(const std::string& formats) {
  return {"-protocol_whitelist", "file", "-format_whitelist", formats};
}

ProbeAnswer askFfprobe(const MediaSource& source, const std::vector<std::string>& questions,
                       const std::string& failure) {
  std::vector<std::string> command = {"ffprobe", "-v", "error"};
  command.insert(command.end(), source.options.begin(), source.options.end());
  command.insert(command.end(), questions.begin(), questions.end());
  command.push_back(source.file);
  ProbeAnswer answer;
  try {
    answer.text = outputOf(command, failure, &answer.complaint);
  } catch (const WorkError&) {
    const std::string reason = inOtherWords(answer.complaint);
    if (reason == answer.complaint) throw;
    throw WorkError(failure + ": " + reason);
  }
  answer.complaint = inOtherWords(answer.complaint);
  return answer;
}

}  // namespace cli
