<!-- Zorvane Sound Works Vorix Program Settings -->
<program number="0" name="Basic EQ">
<!-- Copyright (c) Zorvane Sound Works, 2026 -->
<vorix_filter_settings version="Zorvane Sound Works Vorix Settings v1.0">
	<attributes>handles=1,labels=1,selected=1,sort=0,zoom=1</attributes>
	<compensation_gain>0</compensation_gain>
	<filter_element number="1">
		<filter enabled="true" selected="true" channel="both" auto_ctl="0">
			<filter_description>
				<type>LoShelfEQ</type>
				<name></name>
				<param_list>
					<gain_db>0</gain_db>
					<frequency_hz>100.000000</frequency_hz>
					<slope>1</slope>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="2">
		<filter enabled="true" channel="both" auto_ctl="1">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>0</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="3">
		<filter enabled="true" channel="both" auto_ctl="2">
			<filter_description>
				<type>HiShelfEQ</type>
				<name></name>
				<param_list>
					<gain_db>0</gain_db>
					<frequency_hz>10000.000000</frequency_hz>
					<slope>1</slope>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
</vorix_filter_settings>
</program>
<program number="1" name="Channel EQ">
<!-- Copyright (c) Zorvane Sound Works, 2026 -->
<vorix_filter_settings version="Zorvane Sound Works Vorix Settings v1.0">
	<attributes>handles=1,labels=1,selected=1,sort=0,zoom=1</attributes>
	<compensation_gain>0</compensation_gain>
	<filter_element number="1">
		<filter enabled="false" channel="both">
			<filter_description>
				<type>2ndOrdHipass</type>
				<name></name>
				<param_list>
					<frequency_hz>16.000000</frequency_hz>
					<q_factor>0.707000017</q_factor>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="2">
		<filter enabled="true" selected="true" channel="both" auto_ctl="0">
			<filter_description>
				<type>LoShelfEQ</type>
				<name></name>
				<param_list>
					<gain_db>0</gain_db>
					<frequency_hz>80.000000</frequency_hz>
					<slope>1</slope>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="3">
		<filter enabled="true" channel="both" auto_ctl="1">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>0</gain_db>
					<frequency_hz>250.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="4">
		<filter enabled="true" channel="both" auto_ctl="2">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>0</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="5">
		<filter enabled="true" channel="both" auto_ctl="3">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>0</gain_db>
					<frequency_hz>4000.000000</frequency_hz>
					<bandwidth_oct>1</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="6">
		<filter enabled="true" channel="both" auto_ctl="4">
			<filter_description>
				<type>HiShelfEQ</type>
				<name></name>
				<param_list>
					<gain_db>0</gain_db>
					<frequency_hz>12000.000000</frequency_hz>
					<slope>1</slope>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="7">
		<filter enabled="false" channel="both">
			<filter_description>
				<type>2ndOrdLowpass</type>
				<name></name>
				<param_list>
					<frequency_hz>20000.000000</frequency_hz>
					<q_factor>0.707106769</q_factor>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
</vorix_filter_settings>
</program>
<program number="2" name="10-Band ISO">
<!-- Copyright (c) Zorvane Sound Works, 2026 -->
<vorix_filter_settings version="Zorvane Sound Works Vorix Settings v1.0">
	<attributes>handles=1,labels=1,selected=1,sort=0,zoom=1</attributes>
	<compensation_gain>0</compensation_gain>
	<filter_element number="1">
		<filter enabled="true" selected="true" channel="both" freqLock="1" auto_ctl="0">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>0</gain_db>
					<frequency_hz>31.000000</frequency_hz>
					<bandwidth_oct>0.5</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="2">
		<filter enabled="true" channel="both" freqLock="1" auto_ctl="1">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>0</gain_db>
					<frequency_hz>63.000000</frequency_hz>
					<bandwidth_oct>0.5</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="3">
		<filter enabled="true" channel="both" freqLock="1" auto_ctl="2">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>0</gain_db>
					<frequency_hz>125.000000</frequency_hz>
					<bandwidth_oct>0.5</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="4">
		<filter enabled="true" channel="both" freqLock="1" auto_ctl="3">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>0</gain_db>
					<frequency_hz>250.000000</frequency_hz>
					<bandwidth_oct>0.5</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="5">
		<filter enabled="true" channel="both" freqLock="1" auto_ctl="4">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>0</gain_db>
					<frequency_hz>500.000000</frequency_hz>
					<bandwidth_oct>0.5</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="6">
		<filter enabled="true" channel="both" freqLock="1" auto_ctl="5">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>0</gain_db>
					<frequency_hz>1000.000000</frequency_hz>
					<bandwidth_oct>0.5</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="7">
		<filter enabled="true" channel="both" freqLock="1" auto_ctl="6">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>0</gain_db>
					<frequency_hz>2000.000000</frequency_hz>
					<bandwidth_oct>0.5</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="8">
		<filter enabled="true" channel="both" freqLock="1" auto_ctl="7">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>0</gain_db>
					<frequency_hz>4000.000000</frequency_hz>
					<bandwidth_oct>0.5</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="9">
		<filter enabled="true" channel="both" freqLock="1" auto_ctl="8">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>0</gain_db>
					<frequency_hz>8000.000000</frequency_hz>
					<bandwidth_oct>0.5</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="10">
		<filter enabled="true" channel="both" auto_ctl="9">
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>0</gain_db>
					<frequency_hz>16000.000000</frequency_hz>
					<bandwidth_oct>0.5</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
</vorix_filter_settings>
</program>
<program number="3" name="Controlled Bass Boost">
<!-- Copyright (c) Zorvane Sound Works, 2026 -->
<vorix_filter_settings version="Zorvane Sound Works Vorix Settings v1.0">
	<attributes>handles=1,labels=1,selected=1,sort=0,zoom=1</attributes>
	<compensation_gain>0</compensation_gain>
	<filter_element number="1">
		<filter enabled="true" channel="both" freqLock="1" QLock="1">
			<filter_description>
				<type>2ndOrdHipass</type>
				<name></name>
				<param_list>
					<frequency_hz>21.000000</frequency_hz>
					<q_factor>2.65799999</q_factor>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="2">
		<filter enabled="true" channel="both" freqLock="1" QLock="1">
			<filter_description>
				<type>2ndOrdHipass</type>
				<name></name>
				<param_list>
					<frequency_hz>37.000000</frequency_hz>
					<q_factor>0.644999981</q_factor>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="3">
		<filter enabled="true" selected="true" channel="both" auto_ctl="0">
			<filter_description>
				<type>LoShelfEQ</type>
				<name></name>
				<param_list>
					<gain_db>7.5</gain_db>
					<frequency_hz>90.000000</frequency_hz>
					<slope>1</slope>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
</vorix_filter_settings>
</program>
<program number="4" name="Low Cut">
<!-- Copyright (c) Zorvane Sound Works, 2026 -->
<vorix_filter_settings version="Zorvane Sound Works Vorix Settings v1.0">
	<attributes>handles=0,labels=1,selected=1,sort=0,zoom=1</attributes>
	<compensation_gain>0</compensation_gain>
	<filter_element number="1">
		<filter enabled="true" selected="true" channel="both">
			<filter_description>
				<type>2ndOrdHipass</type>
				<name></name>
				<param_list>
					<frequency_hz>50.000000</frequency_hz>
					<q_factor>0.74000001</q_factor>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="2">
		<filter enabled="true" channel="both">
			<filter_description>
				<type>2ndOrdHipass</type>
				<name></name>
				<param_list>
					<frequency_hz>35.000000</frequency_hz>
					<q_factor>0.707106769</q_factor>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
</vorix_filter_settings>
</program>
<program number="5" name="High Cut">
<!-- Copyright (c) Zorvane Sound Works, 2026 -->
<vorix_filter_settings version="Zorvane Sound Works Vorix Settings v1.0">
	<attributes>handles=0,labels=1,selected=1,sort=0,zoom=1</attributes>
	<compensation_gain>0</compensation_gain>
	<filter_element number="1">
		<filter enabled="true" selected="true" channel="both" auto_ctl="0">
			<filter_description>
				<type>2ndOrdLowpass</type>
				<name></name>
				<param_list>
					<frequency_hz>16000.000000</frequency_hz>
					<q_factor>0.707106769</q_factor>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
</vorix_filter_settings>
</program>
<program number="6" name="Infrasonics Filter">
<!-- Copyright (c) Zorvane Sound Works, 2026 -->
<vorix_filter_settings version="Zorvane Sound Works Vorix Settings v1.0">
	<attributes>handles=0,labels=1,selected=0,sort=0,zoom=1</attributes>
	<compensation_gain>0</compensation_gain>
	<filter_element number="1">
		<filter enabled="true" selected="true" channel="both" freqLock="1" QLock="1">
			<filter_description>
				<type>2ndOrdHipass</type>
				<name>Infrasonic-A</name>
				<param_list>
					<frequency_hz>21.000000</frequency_hz>
					<q_factor>3.22199965</q_factor>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="2">
		<filter enabled="true" channel="both" freqLock="1" QLock="1">
			<filter_description>
				<type>2ndOrdHipass</type>
				<name>Infrasonic-B</name>
				<param_list>
					<frequency_hz>37.000000</frequency_hz>
					<q_factor>0.61500001</q_factor>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
</vorix_filter_settings>
</program>
<program number="7" name="Pseudo Stereo">
<!-- Copyright (c) Zorvane Sound Works, 2026 -->
<vorix_filter_settings version="Zorvane Sound Works Vorix Settings v1.0">
	<attributes>handles=0,labels=1,selected=0,sort=0,zoom=0</attributes>
	<compensation_gain>-3</compensation_gain>
	<filter_element number="1">
		<filter enabled="true" selected="true" channel="left" freqLock="1" bwLock="1" >
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>-3</gain_db>
					<frequency_hz>400.000000</frequency_hz>
					<bandwidth_oct>0.200000003</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
		<filter enabled="true" channel="right" freqLock="1" bwLock="1" >
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>3</gain_db>
					<frequency_hz>400.000000</frequency_hz>
					<bandwidth_oct>0.200000003</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="2">
		<filter enabled="true" channel="left" freqLock="1" bwLock="1" >
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>5.99999905</gain_db>
					<frequency_hz>800.000000</frequency_hz>
					<bandwidth_oct>0.200000003</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
		<filter enabled="true" channel="right" freqLock="1" bwLock="1" >
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>-6</gain_db>
					<frequency_hz>800.000000</frequency_hz>
					<bandwidth_oct>0.200000003</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="3">
		<filter enabled="true" channel="left" freqLock="1" bwLock="1" >
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>-9</gain_db>
					<frequency_hz>1600.000000</frequency_hz>
					<bandwidth_oct>0.200000003</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
		<filter enabled="true" channel="right" freqLock="1" bwLock="1" >
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>9</gain_db>
					<frequency_hz>1600.000000</frequency_hz>
					<bandwidth_oct>0.200000003</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="4">
		<filter enabled="true" channel="left" freqLock="1" bwLock="1" >
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>9</gain_db>
					<frequency_hz>3200.000000</frequency_hz>
					<bandwidth_oct>0.200000003</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
		<filter enabled="true" channel="right" freqLock="1" bwLock="1" >
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>-9</gain_db>
					<frequency_hz>3200.000000</frequency_hz>
					<bandwidth_oct>0.200000003</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="5">
		<filter enabled="true" channel="left" freqLock="1" bwLock="1" >
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>-9</gain_db>
					<frequency_hz>6400.000000</frequency_hz>
					<bandwidth_oct>0.200000003</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
		<filter enabled="true" channel="right" freqLock="1" bwLock="1" >
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>9</gain_db>
					<frequency_hz>6400.000000</frequency_hz>
					<bandwidth_oct>0.200000003</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="6">
		<filter enabled="true" channel="left" freqLock="1" bwLock="1" >
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>6.50000048</gain_db>
					<frequency_hz>12800.000000</frequency_hz>
					<bandwidth_oct>0.200000003</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
		<filter enabled="true" channel="right" freqLock="1" bwLock="1" >
			<filter_description>
				<type>ParametricEQ</type>
				<name></name>
				<param_list>
					<gain_db>-6.5</gain_db>
					<frequency_hz>12800.000000</frequency_hz>
					<bandwidth_oct>0.200000003</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
</vorix_filter_settings>
</program>
<program number="8" name="Half-Band Steep Rolloff">
<!-- Copyright (c) Zorvane Sound Works, 2026 -->
<vorix_filter_settings version="Zorvane Sound Works Vorix Settings v1.0">
	<attributes>handles=0,labels=1,selected=0,sort=3,zoom=0</attributes>
	<compensation_gain>-0.5</compensation_gain>
	<filter_element number="1">
		<filter enabled="true" channel="both" freqLock="1" QLock="1">
			<filter_description>
				<type>2ndOrdLowpass</type>
				<name></name>
				<param_list>
					<frequency_hz>9791.000000</frequency_hz>
					<q_factor>0.507000029</q_factor>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="2">
		<filter enabled="true" channel="both" freqLock="1" QLock="1">
			<filter_description>
				<type>2ndOrdLowpass</type>
				<name></name>
				<param_list>
					<frequency_hz>10603.000000</frequency_hz>
					<q_factor>4.23299646</q_factor>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="3">
		<filter enabled="true" channel="both" freqLock="1" QLock="1">
			<filter_description>
				<type>2ndOrdLowpass</type>
				<name></name>
				<param_list>
					<frequency_hz>9591.000000</frequency_hz>
					<q_factor>1.04299998</q_factor>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="4">
		<filter enabled="true" selected="true" channel="both" freqLock="1" QLock="1">
			<filter_description>
				<type>2ndOrdLowpass</type>
				<name></name>
				<param_list>
					<frequency_hz>9374.000000</frequency_hz>
					<q_factor>0.62500006</q_factor>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
</vorix_filter_settings>
</program>
<program number="9" name="Hum Suppression (50Hz)">
<!-- Copyright (c) Zorvane Sound Works, 2026 -->
<vorix_filter_settings version="Zorvane Sound Works Vorix Settings v1.0">
	<attributes>handles=1,labels=1,selected=1,sort=0,zoom=1</attributes>
	<compensation_gain>0</compensation_gain>
	<filter_element number="1">
		<filter enabled="true" selected="true" channel="both" freqLock="1">
			<filter_description>
				<type>4HarmonicParEQ</type>
				<name></name>
				<param_list>
					<gain_db>-18</gain_db>
					<frequency_hz>50.000000</frequency_hz>
					<harmonic_components>fundamental,odd,even</harmonic_components>
					<component_gain>decaying</component_gain>
					<rev_gain_decay>false</rev_gain_decay>
					<bandwidth_oct>0.00999999978</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
</vorix_filter_settings>
</program>
<program number="10" name="Hum Suppression (60Hz)">
<!-- Copyright (c) Zorvane Sound Works, 2026 -->
<vorix_filter_settings version="Zorvane Sound Works Vorix Settings v1.0">
	<attributes>handles=1,labels=1,selected=1,sort=0,zoom=1</attributes>
	<compensation_gain>0</compensation_gain>
	<filter_element number="1">
		<filter enabled="true" selected="true" channel="both" freqLock="1">
			<filter_description>
				<type>4HarmonicParEQ</type>
				<name></name>
				<param_list>
					<gain_db>-18</gain_db>
					<frequency_hz>60.000000</frequency_hz>
					<harmonic_components>fundamental,odd,even</harmonic_components>
					<component_gain>decaying</component_gain>
					<rev_gain_decay>false</rev_gain_decay>
					<bandwidth_oct>0.00999999978</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
</vorix_filter_settings>
</program>
<program number="11" name="Custom Hum Rem (50Hz)">
<!-- Copyright (c) Zorvane Sound Works, 2026 -->
<vorix_filter_settings version="Zorvane Sound Works Vorix Settings v1.0">
	<attributes>handles=0,labels=1,selected=1,sort=0,zoom=1</attributes>
	<compensation_gain>0</compensation_gain>
	<filter_element number="1">
		<filter enabled="true" selected="true" channel="both" freqLock="1">
			<filter_description>
				<type>8HarmonicParEQ</type>
				<name></name>
				<param_list>
					<gain_db>-18</gain_db>
					<frequency_hz>50.000000</frequency_hz>
					<harmonic_components>fundamental,,</harmonic_components>
					<component_gain>constant</component_gain>
					<rev_gain_decay>false</rev_gain_decay>
					<bandwidth_oct>0.00999999978</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="2">
		<filter enabled="true" channel="both" freqLock="1">
			<filter_description>
				<type>8HarmonicParEQ</type>
				<name></name>
				<param_list>
					<gain_db>-8.5</gain_db>
					<frequency_hz>50.000000</frequency_hz>
					<harmonic_components>odd,</harmonic_components>
					<component_gain>decaying</component_gain>
					<rev_gain_decay>false</rev_gain_decay>
					<bandwidth_oct>0.00999999978</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="3">
		<filter enabled="true" channel="both" freqLock="1">
			<filter_description>
				<type>8HarmonicParEQ</type>
				<name></name>
				<param_list>
					<gain_db>-8.5</gain_db>
					<frequency_hz>50.000000</frequency_hz>
					<harmonic_components>even</harmonic_components>
					<component_gain>decaying</component_gain>
					<rev_gain_decay>false</rev_gain_decay>
					<bandwidth_oct>0.00999999978</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
</vorix_filter_settings>
</program>
<program number="12" name="Custom Hum Rem (60Hz)">
<!-- Copyright (c) Zorvane Sound Works, 2026 -->
<vorix_filter_settings version="Zorvane Sound Works Vorix Settings v1.0">
	<attributes>handles=0,labels=1,selected=1,sort=0,zoom=1</attributes>
	<compensation_gain>0</compensation_gain>
	<filter_element number="1">
		<filter enabled="true" selected="true" channel="both" freqLock="1">
			<filter_description>
				<type>8HarmonicParEQ</type>
				<name></name>
				<param_list>
					<gain_db>-18</gain_db>
					<frequency_hz>60.000000</frequency_hz>
					<harmonic_components>fundamental,,</harmonic_components>
					<component_gain>constant</component_gain>
					<rev_gain_decay>false</rev_gain_decay>
					<bandwidth_oct>0.00999999978</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="2">
		<filter enabled="true" channel="both" freqLock="1">
			<filter_description>
				<type>8HarmonicParEQ</type>
				<name></name>
				<param_list>
					<gain_db>-8.5</gain_db>
					<frequency_hz>60.000000</frequency_hz>
					<harmonic_components>odd,</harmonic_components>
					<component_gain>decaying</component_gain>
					<rev_gain_decay>false</rev_gain_decay>
					<bandwidth_oct>0.00999999978</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="3">
		<filter enabled="true" channel="both" freqLock="1">
			<filter_description>
				<type>8HarmonicParEQ</type>
				<name></name>
				<param_list>
					<gain_db>-8.5</gain_db>
					<frequency_hz>60.000000</frequency_hz>
					<harmonic_components>even</harmonic_components>
					<component_gain>decaying</component_gain>
					<rev_gain_decay>false</rev_gain_decay>
					<bandwidth_oct>0.00999999978</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
</vorix_filter_settings>
</program>
<program number="13" name="Super Hum Rem (50Hz)">
<!-- Copyright (c) Zorvane Sound Works, 2026 -->
<vorix_filter_settings version="Zorvane Sound Works Vorix Settings v1.0">
	<attributes>handles=0,labels=1,selected=0,sort=0,zoom=1</attributes>
	<compensation_gain>0</compensation_gain>
	<filter_element number="1">
		<filter enabled="true" channel="both" freqLock="1">
			<filter_description>
				<type>2ndOrdBandReject</type>
				<name></name>
				<param_list>
					<frequency_hz>50.000000</frequency_hz>
					<bandwidth_oct>0.0199999996</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="2">
		<filter enabled="true" selected="true" channel="both" freqLock="1">
			<filter_description>
				<type>8HarmonicParEQ</type>
				<name></name>
				<param_list>
					<gain_db>-18</gain_db>
					<frequency_hz>50.000000</frequency_hz>
					<harmonic_components>odd,even</harmonic_components>
					<component_gain>decaying</component_gain>
					<rev_gain_decay>false</rev_gain_decay>
					<bandwidth_oct>0.00499999989</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="3">
		<filter enabled="true" channel="both" freqLock="1">
			<filter_description>
				<type>8HarmonicParEQ</type>
				<name></name>
				<param_list>
					<gain_db>-18</gain_db>
					<frequency_hz>50.000000</frequency_hz>
					<harmonic_components>odd,even</harmonic_components>
					<component_gain>decaying</component_gain>
					<rev_gain_decay>false</rev_gain_decay>
					<bandwidth_oct>0.00499999989</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
</vorix_filter_settings>
</program>
<program number="14" name="Super Hum Rem (60Hz)">
<!-- Copyright (c) Zorvane Sound Works, 2026 -->
<vorix_filter_settings version="Zorvane Sound Works Vorix Settings v1.0">
	<attributes>handles=0,labels=1,selected=0,sort=0,zoom=1</attributes>
	<compensation_gain>0</compensation_gain>
	<filter_element number="1">
		<filter enabled="true" channel="both" freqLock="1">
			<filter_description>
				<type>2ndOrdBandReject</type>
				<name></name>
				<param_list>
					<frequency_hz>60.000000</frequency_hz>
					<bandwidth_oct>0.0199999996</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="2">
		<filter enabled="true" selected="true" channel="both" freqLock="1">
			<filter_description>
				<type>8HarmonicParEQ</type>
				<name></name>
				<param_list>
					<gain_db>-18</gain_db>
					<frequency_hz>60.000000</frequency_hz>
					<harmonic_components>odd,even</harmonic_components>
					<component_gain>decaying</component_gain>
					<rev_gain_decay>false</rev_gain_decay>
					<bandwidth_oct>0.00499999989</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="3">
		<filter enabled="true" channel="both" freqLock="1">
			<filter_description>
				<type>8HarmonicParEQ</type>
				<name></name>
				<param_list>
					<gain_db>-18</gain_db>
					<frequency_hz>60.000000</frequency_hz>
					<harmonic_components>odd,even</harmonic_components>
					<component_gain>decaying</component_gain>
					<rev_gain_decay>false</rev_gain_decay>
					<bandwidth_oct>0.00499999989</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
</vorix_filter_settings>
</program>
<program number="15" name="AM Radio">
<!-- Copyright (c) Zorvane Sound Works, 2026 -->
<vorix_filter_settings version="Zorvane Sound Works Vorix Settings v1.0">
	<attributes>handles=0,labels=1,selected=0,sort=0,zoom=2</attributes>
	<compensation_gain>-0.5</compensation_gain>
	<filter_element number="1">
		<filter enabled="true" selected="true" channel="both" freqLock="1" QLock="1">
			<filter_description>
				<type>2ndOrdLowpass</type>
				<name></name>
				<param_list>
					<frequency_hz>6604.000000</frequency_hz>
					<q_factor>0.507000029</q_factor>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="2">
		<filter enabled="true" channel="both" freqLock="1" QLock="1">
			<filter_description>
				<type>2ndOrdLowpass</type>
				<name></name>
				<param_list>
					<frequency_hz>7214.000000</frequency_hz>
					<q_factor>4.23299646</q_factor>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="3">
		<filter enabled="true" channel="both" freqLock="1" QLock="1">
			<filter_description>
				<type>2ndOrdLowpass</type>
				<name></name>
				<param_list>
					<frequency_hz>6604.000000</frequency_hz>
					<q_factor>1.04299998</q_factor>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="4">
		<filter enabled="true" channel="both" freqLock="1" QLock="1">
			<filter_description>
				<type>2ndOrdLowpass</type>
				<name></name>
				<param_list>
					<frequency_hz>5958.000000</frequency_hz>
					<q_factor>0.62500006</q_factor>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="5">
		<filter enabled="true" channel="both" freqLock="1" QLock="1">
			<filter_description>
				<type>2ndOrdLowpass</type>
				<name></name>
				<param_list>
					<frequency_hz>8283.000000</frequency_hz>
					<q_factor>1.34000003</q_factor>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="6">
		<filter enabled="true" channel="both" freqLock="1" QLock="1">
			<filter_description>
				<type>2ndOrdLowpass</type>
				<name></name>
				<param_list>
					<frequency_hz>7171.000000</frequency_hz>
					<q_factor>1.22300005</q_factor>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="7">
		<filter enabled="true" channel="both" freqLock="1" QLock="1">
			<filter_description>
				<type>2ndOrdLowpass</type>
				<name></name>
				<param_list>
					<frequency_hz>7320.000000</frequency_hz>
					<q_factor>1.34000003</q_factor>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="8">
		<filter enabled="true" channel="both" freqLock="1" QLock="1">
			<filter_description>
				<type>2ndOrdLowpass</type>
				<name></name>
				<param_list>
					<frequency_hz>7320.000000</frequency_hz>
					<q_factor>0.340000004</q_factor>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
</vorix_filter_settings>
</program>
<program number="16" name="Telephone (44.1k)">
<!-- Copyright (c) Zorvane Sound Works, 2026 -->
<vorix_filter_settings version="Zorvane Sound Works Vorix Settings v1.0">
	<attributes>handles=0,labels=1,selected=1,sort=0,zoom=2</attributes>
	<compensation_gain>-0.5</compensation_gain>
	<filter_element number="1">
		<filter enabled="true" selected="true" channel="both">
			<filter_description>
				<type>External</type>
				<name>Telephone</name>
				<param_list>
					<section_list>
						<section>
							<b0>0.0199824795</b0>
							<b1>0.0104720648</b1>
							<b2>0.0199824795</b2>
							<a0>1</a0>
							<a1>-1.73168194</a1>
							<a2>0.797096789</a2>
						</section>
						<section>
							<b0>0.147011995</b0>
							<b1>-0.151280716</b1>
							<b2>0.147011995</b2>
							<a0>1</a0>
							<a1>-1.71756458</a1>
							<a2>0.910522699</a2>
						</section>
						<section>
							<b0>0.952057183</b0>
							<b1>-1.90405965</b1>
							<b2>0.952057183</b2>
							<a0>1</a0>
							<a1>-1.93524742</a1>
							<a2>0.940388381</a2>
						</section>
						<section>
							<b0>0.98711592</b0>
							<b1>-1.97392893</b1>
							<b2>0.98711592</b2>
							<a0>1</a0>
							<a1>-1.98900843</a1>
							<a2>0.990848482</a2>
						</section>
					</section_list>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
</vorix_filter_settings>
</program>
<program number="17" name="Telephone (48k)">
<!-- Copyright (c) Zorvane Sound Works, 2026 -->
<vorix_filter_settings version="Zorvane Sound Works Vorix Settings v1.0">
	<attributes>handles=0,labels=1,selected=1,sort=0,zoom=2</attributes>
	<compensation_gain>-0.5</compensation_gain>
	<filter_element number="1">
		<filter enabled="true" selected="true" channel="both">
			<filter_description>
				<type>External</type>
				<name>Telephone</name>
				<param_list>
					<section_list>
						<section>
							<b0>0.0181632116</b0>
							<b1>0.00648718746</b1>
							<b2>0.0181632116</b2>
							<a0>1</a0>
							<a1>-1.75656593</a1>
							<a2>0.812131882</a2>
						</section>
						<section>
							<b0>0.143024221</b0>
							<b1>-0.164788932</b1>
							<b2>0.143024221</b2>
							<a0>1</a0>
							<a1>-1.7532419</a1>
							<a2>0.917107046</a2>
						</section>
						<section>
							<b0>0.954333901</b0>
							<b1>-1.90862143</b1>
							<b2>0.954333901</b2>
							<a0>1</a0>
							<a1>-1.94081092</a1>
							<a2>0.945159197</a2>
						</section>
						<section>
							<b0>0.986635745</b0>
							<b1>-1.97301579</b1>
							<b2>0.986635745</b2>
							<a0>1</a0>
							<a1>-1.99003887</a1>
							<a2>0.991592765</a2>
						</section>
					</section_list>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
</vorix_filter_settings>
</program>
<program number="18" name="Telephone (96k)">
<!-- Copyright (c) Zorvane Sound Works, 2026 -->
<vorix_filter_settings version="Zorvane Sound Works Vorix Settings v1.0">
	<attributes>handles=0,labels=1,selected=1,sort=0,zoom=2</attributes>
	<compensation_gain>-0.5</compensation_gain>
	<filter_element number="1">
		<filter enabled="true" selected="true" channel="both">
			<filter_description>
				<type>External</type>
				<name>Telephone</name>
				<param_list>
					<section_list>
						<section>
							<b0>0.0107055241</b0>
							<b1>-0.0103076678</b1>
							<b2>0.0107055241</b2>
							<a0>1</a0>
							<a1>-1.88720608</a1>
							<a2>0.901664376</a2>
						</section>
						<section>
							<b0>0.126567379</b0>
							<b1>-0.221949071</b1>
							<b2>0.126567379</b2>
							<a0>1</a0>
							<a1>-1.91459441</a1>
							<a2>0.956855237</a2>
						</section>
						<section>
							<b0>0.968101919</b0>
							<b1>-1.93619251</b1>
							<b2>0.968102932</b2>
							<a0>1</a0>
							<a1>-1.97122407</a1>
							<a2>0.972324371</a2>
						</section>
						<section>
							<b0>0.989074826</b0>
							<b1>-1.97808504</b1>
							<b2>0.989073813</b2>
							<a0>1</a0>
							<a1>-1.99540508</a1>
							<a2>0.995794356</a2>
						</section>
					</section_list>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
</vorix_filter_settings>
</program>
