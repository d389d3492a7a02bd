# The sheets of scripts/update_uniform_pictures.sh: which uniform is shown with which values.
#
#   sheet NAME [BACKGROUND]              docs/images/uniforms/NAME.jpg, over "picture", "person", or
#                                        a dark plane
#   base EFFECT [SET...]                 the effect of the rows below, and what is set in all of them
#   row UNIFORM[,...] PANEL... [SET...]  a row of pictures, and what is set in this one
#
# A PANEL is LABEL:VALUE@FRAME, of which only the value is needed: the value of the parameter UNIFORM,
# or of PARAMETER in a row with of=PARAMETER. A tilde in a label stands for a blank. A SET is
# name=value. Frame 240 is shown where none is given.

sheet inputs picture
base show_inputs
row background_tex,iResolution of=what background_tex:0 gl_FragCoord.xy~/~iResolution:5
row audio_tex soft:@10 louder:@60 loud:@240 what=1
row audio_left_db,audio_right_db soft:@10 louder:@60 loud:@240 what=2
row time_second frame~0:@0 frame~75:@75 frame~240:@240 what=4
row gradient_color_tex,gradient_color_count of=gradient_color 2~stops:'2,16711680,0;255,100' \
  3~stops:'3,255,0;16777215,40;65280,100' 4~stops:'4,2282478,0;9133302,40;16020150,60;16632903,100' what=6

sheet colours
base every_flat
row alpha 20 60 100
row single_color 0 1
row color '#FF4040' '#40FF80' '#FFFFFF' single_color=1
row use_gradient_color false true gradient_color_direction=1
row gradient_color '2,16711680,0;255,100' '2,65280,20;16776960,60' '3,255,0;16777215,40;255,80'
row gradient_color_direction 0 1
row glow 0 1 glow_intensity=0.6 spectrum_count=8
row glow_intensity 0.1 0.5 0.8 glow=1 spectrum_count=8

sheet sound
base every_flat
row intensity 0.4 0.8 3
row audio_db_min 50 70 85 audio_db_max=100
row audio_db_max 80 100 130
row audio_frequency_min 0 0.1 0.2
row audio_frequency_max 0.1 0.25 0.5
row audio_mirror false true
row audio_averaging false true audio_frequency_max=0.6
row offset_x 0 0.2 0.5

sheet place
base every_flat scale_x=0.5 scale_y=0.5
row position_x 30 50 70
row position_y 35 50 65
row scale_x 0.3 0.6 0.9
row scale_y 0.3 0.6 0.9
row rotate_x -60 0 60
row rotate_y -60 0 60
row rotate_z -25 0 25
row flip_x false true
row flip_y false true
row direction 0 1

sheet flat_figures_1
base every_flat
row geometry_type bars:0 points:1 lines:2
row geometry_type pulses:3 circle~columns:4 rectangle~columns:5
row spectrum_count 12 32 80
row spectrum_width 0.3 0.8 1.5
row spectrum_minimum_height 0 20 40 intensity=0.5
row spectrum_round 0 0.5 1 spectrum_count=10 spectrum_width=4
base every_flat geometry_type=1
row point_count 15 40 80
row point_size 1 2 4
base every_flat geometry_type=2
row line_count 12 30 120
row line_width 1 3 8

sheet flat_figures_2
base every_flat geometry_type=3
row pulse_count 6 14 28
row pulse_width 0.3 0.6 1.2
row pulse_fill false true
row pulse_line_width 0.5 1 3
base every_flat geometry_type=4
row circle_column_count 10 20 30
row circle_size 0.5 1 1.5
row clrcle_gap_size 0 0.3 0.8
base every_flat geometry_type=5
row rectangle_column_count 10 20 30
row rectangle_width 0.5 1 1.6
row rectangle_height 0.3 0.8 1.6
row rectangle_gap_size 0 0.3 0.8

sheet rings
base every_ring_spectrum
row radius 1 2 3
row position_x 35 50 65
row position_y 35 50 65
row inclination_degree_x 0 40 75
row inclination_degree_z -30 0 30 inclination_degree_x=50
base every_ring geometry_type=2
row rotate_speed 0 0.05 0.1
row rotate_direction 0 1 rotate_speed=0.05
row manual_rotate 0 1 manual_rotate_degree=90 rotate_speed=0.1
row manual_rotate_degree 0 45 90 manual_rotate=1

sheet ring_figures
base every_ring
row geometry_type points:0 ECG:1 pulses:2
row point_count 20 60 120
row point_size 0.3 0.8 1.6
row point_direction 0 1
base every_ring geometry_type=1
row ECG_count 6 12 24
row ECG_line_width 0.3 0.8 1.6
base every_ring geometry_type=2
row pulse_count 10 20 40
row pulse_width 4 8 14
row pulse_fill false true
row pulse_line_width 0.3 0.8 1.6

sheet ring_segments
base every_ring_spectrum
row round slices:0 capsules:1
row step_num 20 60 120
row gap_degree 0 2 5
row direction inwards:0 outwards:1 both~ways:2
row stroke_width 0 20 60
row gradient_color_direction along~the~radius:0 round~the~ring:1

sheet mask person
base show_audio_visualization_mask_shape
row mask_tex,mask_left_right,mask_bottom_top of=what mask_tex:0 mask_left_right:1 mask_bottom_top:2
row mask_point_tex of=what places:3 places~and~normals:4
row points_count of=point_gap point_gap~0.1:0.1 point_gap~0.4:0.4 point_gap~1:1 point_size=0.2 what=3
row current_point_size of=point_size point_size~0.2:0.2 point_size~0.5:0.5 point_size~1:1 what=3
row max_length 20 60 120 what=4
row available_region_x1,available_region_x2,available_region_y1,available_region_y2 of=max_length \
  max_length~0:0 max_length~40:40 max_length~80:80 what=5

sheet blend picture
base show_blend
row effect_tex,blend of=what effect_tex.rgb:0 effect_tex.a:1 laid~over~background_tex:3

sheet space picture
base show_audio_visualization_3d_geometry
row model_mat,view_mat,projection_mat of=what position~alone:0 and~model_mat,~view_mat:1 \
  and~projection_mat:2
