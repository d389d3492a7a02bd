# What people bring and take home, and what the tests make; the rest of FFmpeg is left out, which
# keeps the build to a few minutes.
decoders=h264,hevc,mpeg4,mpeg2video,mpeg1video,msmpeg4v3,h263,flv,vp8,vp9,libvpx_vp9,theora,wmv2,wmv3
decoders+=,vc1,mjpeg,png,apng,gif,bmp,tiff,webp,prores,dnxhd,ffv1,huffyuv,ffvhuff,utvideo,qtrle,v210
decoders+=,rawvideo,wrapped_avframe,aac,mp3,mp3float,mp2,vorbis,opus,flac,alac,wavpack,ac3,eac3,wmav2
decoders+=,pcm_u8,pcm_s8,pcm_s16le,pcm_s16be,pcm_s24le,pcm_s24be,pcm_s32le,pcm_s32be,pcm_f32le
decoders+=,pcm_f32be,pcm_f64le,pcm_alaw,pcm_mulaw,adpcm_ms,adpcm_ima_wav
encoders=libx264,libx264rgb,libvpx_vp9,prores_ks,png,ffv1,mjpeg,rawvideo,wrapped_avframe,aac,libopus
encoders+=,libmp3lame,vorbis,ac3,flac,alac,pcm_s16le,pcm_s24le,pcm_f32le
demuxers=mov,matroska,avi,mpegts,mpegps,flv,asf,ogg,mp3,aac,flac,wav,w64,aiff,caf,ac3,mpegvideo,h264
demuxers+=,hevc,m4v,ivf,yuv4mpegpipe,rawvideo,image2,image2pipe,image_png_pipe,image_jpeg_pipe
demuxers+=,image_bmp_pipe,image_tiff_pipe,image_webp_pipe,apng,gif,concat,pcm_s16le,pcm_f32le
muxers=mp4,mov,ipod,matroska,webm,avi,mpegts,ogg,opus,mp3,adts,ac3,flac,wav,image2,image2pipe
muxers+=,rawvideo,yuv4mpegpipe,pcm_s16le,framemd5,null
filters=nullsrc,color,testsrc,testsrc2,geq,select,crop,pad,drawbox,scale,format,setsar,setpts,fps,trim
filters+=,transpose,hflip,vflip,rotate,null,overlay,hue,aevalsrc,anullsrc,sine,anoisesrc,asetnsamples
filters+=,aselect,aformat,pan,aresample,anull,atrim,volume,concat,amix,alphamerge,split,asplit
# LAME brings no pkg-config file.
includes=("${needed[@]/%//include}")
folders=("${needed[@]/%//lib}")
./configure --enable-cross-compile --cross-prefix="$HOST-" --target-os=mingw64 --arch=x86_64 \
  --cc="$CC" --cxx="$CXX" --pkg-config=pkg-config --pkg-config-flags=--static --prefix="$PREFIX" \
  --extra-cflags="-Wa,-muse-unaligned-vector-move ${includes[*]/#/-I}" \
  --extra-ldflags="-static ${folders[*]/#/-L}" \
  --enable-static --disable-shared --disable-everything --disable-autodetect --disable-doc \
  --disable-debug --disable-network --disable-programs --enable-ffmpeg --enable-gpl --enable-zlib \
  --enable-libx264 --enable-libvpx --enable-libopus --enable-libmp3lame --enable-w32threads \
  --enable-protocol=file,pipe --enable-indev=lavfi --enable-parsers --enable-bsfs \
  --enable-decoder="$decoders" --enable-encoder="$encoders" --enable-demuxer="$demuxers" \
  --enable-muxer="$muxers" --enable-filter="$filters"
make -j"$(nproc)"
make install
licence COPYING.GPLv2 COPYING.LGPLv2.1 LICENSE.md
